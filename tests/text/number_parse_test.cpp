#include <qorin/text.h>

#include "support/number_texts.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

using qorin::testing::thrown_message;
constexpr const char* kExpected = "Expected a string containing a number";

TEST(NumberParse, ValidatedDoubles) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Case { const char* text; double value; };
  for (const Case& c : {Case{"1", 1.0}, Case{" -2.5\n", -2.5}, Case{"+.5", 0.5}, Case{"1e999", inf},
                        Case{"-1e999", -inf}, Case{"1e-999", 0.0}, Case{"0.1", 0.1},
                        Case{"2.2250738585072011e-308", 2.2250738585072009e-308},
                        Case{"123456789012345678901234567890", 1.2345678901234568e29}}) {
    bool ok = false;
    EXPECT_EQ(qorin::toDouble_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_TRUE(ok) << c.text;
    EXPECT_EQ(qorin::toDouble_or_throw(c.text), c.value) << c.text;
  }
  EXPECT_TRUE(std::signbit(qorin::toDouble_nothrow("-0")));
  bool ok = true;
  EXPECT_EQ(qorin::toDouble_nothrow("12abc", &ok), 0.0);  // a prefix is no number here
  EXPECT_FALSE(ok);
  EXPECT_EQ(thrown_message<std::runtime_error>([] { qorin::toDouble_or_throw("3 GHz"); }), kExpected);
}

// Rounded half away from zero; the range test comes before rounding.
TEST(NumberParse, Integers) {
  struct Case { const char* text; bool ok; int value; };
  const Case cases[] = {
      {"2.5", true, 3},      {"-2.5", true, -3},  {"2.4999", true, 2},  {"1e3", true, 1000},
      {"-0.4", true, 0},     {"2147483647.4", true, 2147483647},       {"2147483647.5", false, 0},
      {"-2147483648.4", true, -2147483647 - 1},  {"-2147483648.5", false, 0},
      {"3e9", false, 0},     {"1e999", false, 0}, {"inf", false, 0},    {"", false, 0},
  };
  for (const Case& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(qorin::toInt_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
  }
  EXPECT_EQ(qorin::toInt_or_throw(" 7\n"), 7);
  EXPECT_EQ(thrown_message<std::runtime_error>([] { qorin::toInt_or_throw("3e9"); }), kExpected);
}

// Values from 2^31 up come back as their 32-bit pattern.
TEST(NumberParse, UnsignedInts) {
  struct Case { const char* text; bool ok; int value; };
  const Case cases[] = {
      {"4294967295", true, -1},  {"4294967295.4", true, -1}, {"4294967295.5", false, 0},
      {"2147483648", true, -2147483647 - 1},                 {"0.5", true, 1},
      {"-0", true, 0},           {"-0.4", false, 0},         {"x", false, 0},
  };
  for (const Case& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(qorin::toUnsignedInt_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
  }
  EXPECT_EQ(qorin::toUnsignedInt_or_throw("7"), 7);
  EXPECT_EQ(thrown_message<std::runtime_error>([] { qorin::toUnsignedInt_or_throw("-1"); }), kExpected);
}

#ifdef __GLIBC__
// glibc's strtod rounds correctly; the validated family must equal it bit for bit.
TEST(NumberParse, EqualsStrtodForEveryValidText) {
  std::mt19937_64 rng(20240611);
  int valid = 0;
  for (int i = 0; i < 200000; ++i) {
    const std::string text = qorin::testing::random_number_text(rng);
    if (qorin::isValidInt(text)) {
      EXPECT_TRUE(qorin::isValidNumber(text)) << text;
    }
    if (!qorin::isValidNumber(text)) continue;
    ++valid;
    const double ours = qorin::toDouble_nothrow(text);
    const double theirs = std::strtod(text.c_str(), nullptr);
    ASSERT_EQ(std::memcmp(&ours, &theirs, sizeof ours), 0) << '"' << text << "\" " << ours << " vs " << theirs;
  }
  EXPECT_GT(valid, 20000);  // the generator must reach the valid side
}
#endif

}  // namespace
