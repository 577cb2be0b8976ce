// Numbers to text: printf's "C" locale texts on every platform (msvcrt's
// printf would write "1e+020"), padded to a column.
#include <qorin/text.h>

#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

TEST(NumberFormat, WritesWhatPrintfWritesInTheCLocale) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Row { double x; char format; int precision, width; const char* text; };
  const Row rows[] = {
      {0.1, 'g', 6, 0, "0.1"},          {1e20, 'g', 6, 0, "1e+20"},          {1e20, 'G', 6, 0, "1E+20"},
      {1e-5, 'g', 6, 0, "1e-05"},       {2.0, 'f', 3, 8, "   2.000"},        {2.0, 'f', 3, -8, "2.000   "},
      {-inf, 'E', 6, 5, " -INF"},       {-inf, 'e', 6, 3, "-inf"},           {std::nan(""), 'G', 6, 0, "NAN"},
      {1.5, 'e', 2, 0, "1.50e+00"},     {1e300, 'e', 3, 0, "1.000e+300"},    {5e-324, 'g', 3, 0, "4.94e-324"},
      {123456789.0, 'g', 6, 0, "1.23457e+08"},                               {0.1, 'g', 17, 0, "0.10000000000000001"},
      // Ties go to even, as glibc rounds the exact binary value.
      {1.5, 'E', 0, 0, "2E+00"},        {2.5, 'f', 0, 0, "2"},               {0.5, 'f', 0, 0, "0"},
      // Precision 0 means 1 for 'g'; a negative one means 6.
      {100.0, 'g', 0, 0, "1e+02"},      {1.5, 'g', -1, 0, "1.5"},            {-0.0, 'g', 6, 0, "-0"},
      {1e22, 'f', 2, 0, "10000000000000000000000.00"},
  };
  for (const Row& row : rows) {
    const auto format = static_cast<qorin::DoubleFormat>(row.format);
    EXPECT_EQ(qorin::fromDouble(row.x, format, row.precision, row.width), row.text) << row.x << " %" << row.format;
  }
  EXPECT_EQ(qorin::fromDouble(1.0, qorin::fixed, 400, 0).size(), 402u);
  EXPECT_EQ(qorin::fromDouble(0.1, qorin::general, 100000, 0),
            "0.1000000000000000055511151231257827021181583404541015625");
  for (char format : {'x', 'a', 'F', '\0'}) {
    EXPECT_EQ(qorin::testing::thrown_message<std::runtime_error>(
                  [format] { qorin::fromDouble(1.0, static_cast<qorin::DoubleFormat>(format), 6, 0); }),
              "Invalid format flag.");
  }
}

TEST(NumberFormat, IntegersArePlainDecimal) {
  EXPECT_EQ(qorin::fromInt(-5, 4), "  -5");
  EXPECT_EQ(qorin::fromInt(12345, 3), "12345");
  EXPECT_EQ(qorin::fromInt(-2147483647 - 1, -13), "-2147483648  ");
  EXPECT_EQ(qorin::fromUnsignedInt(4294967295u, 0), "4294967295");
}

// `size` counts the characters without the NUL: a text that fills it writes
// size + 1 bytes, and callers size their buffers for that.
TEST(NumberFormat, FormatIntToBufferWritesSizePlusOneBytes) {
  char buffer[24];
  std::memset(buffer, 'x', sizeof buffer);
  EXPECT_TRUE(qorin::format_int_to_buffer(-123, 4, buffer));
  EXPECT_EQ(std::string(buffer, 6), std::string("-123\0x", 6));
  EXPECT_FALSE(qorin::format_int_to_buffer(-123, 3, buffer));
  EXPECT_EQ(buffer[0], '\0');
  EXPECT_TRUE(qorin::format_int_to_buffer(-9223372036854775807LL - 1, 20, buffer));
  EXPECT_STREQ(buffer, "-9223372036854775808");
}

}  // namespace
