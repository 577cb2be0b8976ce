// A host program may switch the whole process to a comma-decimal locale;
// number text must not notice.
#include <qorin/text.h>

#include "support/comma_locale.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(NumberLocale, CommaDecimalLocaleChangesNothing) {
  qorin::testing::CommaLocale german;
  if (!german.active()) GTEST_SKIP() << "no comma-decimal locale (./scripts/bootstrap makes one)";
  EXPECT_EQ(std::strtod("1.5", nullptr), 1.0);  // what must not leak in

  EXPECT_EQ(qorin::toDouble_nothrow("1.5"), 1.5);
  EXPECT_FALSE(qorin::isValidNumber("1,5"));
  EXPECT_EQ(qorin::toInt_or_throw("2.5"), 3);
  EXPECT_EQ(qorin::toDouble_only("1.5"), 1.5);
  EXPECT_EQ(qorin::toDouble_only("1,5"), 1.0);
  EXPECT_EQ(qorin::fromDouble(1.5, qorin::general, 6, 0), "1.5");
  EXPECT_EQ(qorin::fromDouble(1234567.25, qorin::fixed, 2, 0), "1234567.25");
  EXPECT_EQ(qorin::fromInt(-1234567, 0), "-1234567");  // no grouping either
  EXPECT_EQ(qorin::fromUnsignedInt(1234567, 0), "1234567");
}

}  // namespace
