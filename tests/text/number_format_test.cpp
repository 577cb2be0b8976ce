#include <qorin/text.h>

#include "support/number_texts.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace {

// Exact texts, the same on every platform (msvcrt's printf would write "1e+020").
TEST(NumberFormat, WritesAsPrintfInTheCLocale) {
  struct Case { double x; char format; int precision; int width; const char* expected; };
  const double inf = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {0.1, 'g', 6, 0, "0.1"},              {1e20, 'g', 6, 0, "1e+20"},         {1e20, 'G', 6, 0, "1E+20"},
      {2.0, 'f', 3, 8, "   2.000"},         {2.0, 'f', 3, -8, "2.000   "},      {1e-5, 'g', 6, 0, "1e-05"},
      {123456789.0, 'g', 6, 0, "1.23457e+08"},  {1.5, 'e', 2, 0, "1.50e+00"},   {1.5, 'E', 0, 0, "2E+00"},
      {2.5, 'f', 0, 0, "2"},                {0.5, 'f', 0, 0, "0"},              {-0.0, 'g', 6, 0, "-0"},
      {1e300, 'e', 3, 0, "1.000e+300"},     {5e-324, 'g', 3, 0, "4.94e-324"},   {100.0, 'g', 0, 0, "1e+02"},
      {1.5, 'g', -1, 0, "1.5"},             {1.5, 'f', -3, 0, "1.500000"},      {0.1, 'g', 17, 0, "0.10000000000000001"},
      {inf, 'g', 6, 0, "inf"},              {-inf, 'E', 6, 5, " -INF"},         {std::nan(""), 'G', 6, 0, "NAN"},
      {1e22, 'f', 2, 0, "10000000000000000000000.00"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::fromDouble(c.x, static_cast<qorin::DoubleFormat>(c.format), c.precision, c.width), c.expected)
        << c.x << " %." << c.precision << c.format;
  }
  EXPECT_EQ(qorin::fromDouble(1.0, qorin::fixed, 400, 0).size(), 402u);
  EXPECT_EQ(qorin::fromDouble(0.1, qorin::general, 100000, 0),
            "0.1000000000000000055511151231257827021181583404541015625");
}

TEST(NumberFormat, RejectsOtherFormatLetters) {
  for (char format : {'x', 'a', 'F', '\0'}) {
    EXPECT_EQ(qorin::testing::thrown_message<std::runtime_error>([format] {
                qorin::fromDouble(1.0, static_cast<qorin::DoubleFormat>(format), 6, 0);
              }),
              "Invalid format flag.");
  }
}

TEST(NumberFormat, Integers) {
  EXPECT_EQ(qorin::fromInt(-5, 4), "  -5");
  EXPECT_EQ(qorin::fromInt(12345, 3), "12345");
  EXPECT_EQ(qorin::fromInt(-2147483647 - 1, -13), "-2147483648  ");
  EXPECT_EQ(qorin::fromUnsignedInt(4294967295u, 0), "4294967295");

  char buffer[32];
  EXPECT_TRUE(qorin::format_int_to_buffer(-123, 4, buffer));
  EXPECT_STREQ(buffer, "-123");
  std::snprintf(buffer, sizeof buffer, "junk");
  EXPECT_FALSE(qorin::format_int_to_buffer(-123, 3, buffer));
  EXPECT_STREQ(buffer, "");
  EXPECT_TRUE(qorin::format_int_to_buffer(-9223372036854775807LL - 1, 20, buffer));
  EXPECT_STREQ(buffer, "-9223372036854775808");
}

TEST(NumberFormat, HasFraction) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Case { double x; bool expected; };
  for (const Case& c : {Case{2.0, false}, Case{-2.5, true}, Case{1e300, false}, Case{inf, false},
                        Case{-inf, false}, Case{std::nan(""), true}, Case{5e-324, true}}) {
    EXPECT_EQ(qorin::has_fraction(c.x), c.expected) << c.x;
  }
}

#ifdef __GLIBC__
TEST(NumberFormat, EqualsGlibcSnprintf) {
  std::mt19937_64 rng(99);
  for (int i = 0; i < 5000; ++i) {
    const double x = qorin::testing::random_double(rng);
    for (char format : {'e', 'E', 'f', 'g', 'G'}) {
      for (int precision = 0; precision <= 20; ++precision) {
        const char spec[] = {'%', '.', '*', format, '\0'};
        char expected[400];
        std::snprintf(expected, sizeof expected, spec, precision, x);
        ASSERT_EQ(qorin::fromDouble(x, static_cast<qorin::DoubleFormat>(format), precision, 0), expected)
            << spec << " with precision " << precision;
      }
    }
  }
}
#endif

}  // namespace
