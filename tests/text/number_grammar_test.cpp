#include <qorin/text.h>

#include <gtest/gtest.h>

namespace {

struct GrammarCase {
  std::string text;
  bool number;
  bool integer;
};

TEST(NumberGrammar, DecidesNumbersAndIntegers) {
  const GrammarCase cases[] = {
      {"", false, false},         {"   ", false, false},        {"+", false, false},
      {"-", false, false},        {" -", false, false},         {"-5", true, true},
      {"+7", true, true},         {"42", true, true},           {"-0", true, true},
      {"5.", true, false},        {".5", true, false},          {"+.5", true, false},
      {".", false, false},        {"-.", false, false},         {"1e", false, false},
      {"1e+", false, false},      {"1E-3", true, false},        {"1e3", true, false},
      {"1.5e3 ", true, false},    {"1.5\n", true, false},       {"1.5\n\n", false, false},
      {"1.5\r\n", false, false},  {" \t7", true, true},         {" 42\t", true, true},
      {"42\n", true, true},       {"42 \t\n", true, true},      {"42\n ", false, false},
      {"\n42", false, false},     {"0x10", false, false},       {"1,5", false, false},
      {"inf", false, false},      {"nan", false, false},        {"4.0", true, false},
      {"4 2", false, false},      {"42 x", false, false},       {"3 GHz", false, false},
      {"+-5", false, false},      {"--5", false, false},        {"1e5.5", false, false},
      {".e5", false, false},      {"5.e5", true, false},        {"1_000", false, false},
      {std::string("1\0", 2), false, false},                    {"\v1", false, false},
  };
  for (const GrammarCase& c : cases) {
    EXPECT_EQ(qorin::isValidNumber(c.text), c.number) << '"' << c.text << '"';
    EXPECT_EQ(qorin::isValidInt(c.text), c.integer) << '"' << c.text << '"';
  }
}

}  // namespace
