#include <qorin/text.h>

#include "support/number_texts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(NumberParse, ValidatedDoubles) {
  struct Case { const char* text; double value; };
  const Case cases[] = {
      {"1", 1.0},          {" -2.5\n", -2.5},   {"+.5", 0.5},      {"5.", 5.0},
      {"1e999", kInf},     {"-1e999", -kInf},   {"1e-999", 0.0},   {"0.1", 0.1},
      {"2.2250738585072011e-308", 2.2250738585072009e-308},
      {"123456789012345678901234567890", 1.2345678901234568e29},
  };
  for (const Case& c : cases) {
    bool ok = false;
    EXPECT_EQ(qorin::toDouble_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_TRUE(ok) << c.text;
    EXPECT_EQ(qorin::toDouble_or_throw(c.text), c.value) << c.text;
  }
  EXPECT_TRUE(std::signbit(qorin::toDouble_nothrow("-0")));
}

TEST(NumberParse, InvalidTextsFailInEveryVariant) {
  for (const char* text : {"", "3 GHz", "1,5", "inf", "0x10", "1e", "12abc"}) {
    bool ok = true;
    EXPECT_EQ(qorin::toDouble_nothrow(text, &ok), 0.0) << text;
    EXPECT_FALSE(ok) << text;
    ok = true;
    EXPECT_EQ(qorin::toInt_nothrow(text, &ok), 0) << text;
    EXPECT_FALSE(ok) << text;
    ok = true;
    EXPECT_EQ(qorin::toUnsignedInt_nothrow(text, &ok), 0) << text;
    EXPECT_FALSE(ok) << text;
    EXPECT_EQ(qorin::toDouble_nothrow(text), 0.0);  // a null ok pointer is fine
  }
}

TEST(NumberParse, IntegersRoundHalfAwayFromZeroAndCheckRangeBeforeRounding) {
  struct Case { const char* text; bool ok; int value; };
  const Case cases[] = {
      {"2.5", true, 3},        {"-2.5", true, -3},   {"2.4999", true, 2},  {"1e3", true, 1000},
      {"-0.4", true, 0},       {"2147483647.4", true, 2147483647},         {"2147483647.5", false, 0},
      {"-2147483648.4", true, -2147483647 - 1},    {"-2147483648.5", false, 0},
      {"3e9", false, 0},       {"1e999", false, 0},
  };
  for (const Case& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(qorin::toInt_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(qorin::toInt_or_throw(c.text), c.value);
    } else {
      try {
        qorin::toInt_or_throw(c.text);
        ADD_FAILURE() << c.text << " did not throw";
      } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "Expected a string containing a number");
      }
    }
  }
}

TEST(NumberParse, UnsignedIntsComeBackAsTheir32BitPattern) {
  struct Case { const char* text; bool ok; int value; };
  const Case cases[] = {
      {"4294967295", true, -1},  {"4294967295.4", true, -1}, {"4294967295.5", false, 0},
      {"2147483648", true, -2147483647 - 1},                 {"0.5", true, 1},
      {"-0", true, 0},           {"-0.4", false, 0},         {"1e999", false, 0},
  };
  for (const Case& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(qorin::toUnsignedInt_nothrow(c.text, &ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
  }
  EXPECT_EQ(qorin::toUnsignedInt_or_throw("7"), 7);
  EXPECT_THROW(qorin::toUnsignedInt_or_throw("-1"), std::runtime_error);
}

#ifdef __GLIBC__
// glibc's strtod is correctly rounded and is the reference the validated
// family must equal bit for bit.
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
    bool ok = false;
    const double ours = qorin::toDouble_nothrow(text, &ok);
    const double theirs = std::strtod(text.c_str(), nullptr);
    ASSERT_TRUE(ok) << text;
    ASSERT_EQ(std::memcmp(&ours, &theirs, sizeof ours), 0) << '"' << text << "\" " << ours << " vs " << theirs;
  }
  EXPECT_GT(valid, 20000);  // the generator must reach the interesting side
}
#endif

}  // namespace
