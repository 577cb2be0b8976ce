#include <qorin/env.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <thread>

namespace {

using qorin::testing::ScopedEnvironmentVariable;

TEST(Environment, ValuesRoundTripInUtf8) {
  const std::string values[] = {
      "plain", "Gr\xc3\xbc\xc3\x9f" "e \xe2\x9c\x93", "a=b; c", std::string(4999, 'v'), std::string(5000, 'w'),
      std::string(12000, 'x') + "\xf0\x9f\x98\x80",
  };
  for (const std::string& value : values) {
    ScopedEnvironmentVariable variable("QORIN_TEST_VALUE", value);
    std::string read;
    EXPECT_TRUE(qorin::getEnvKstringAllowEmpty("QORIN_TEST_VALUE", &read));
    EXPECT_EQ(read, value);
    EXPECT_EQ(qorin::getEnvKstring("QORIN_TEST_VALUE"), value);
    EXPECT_EQ(qorin::getenv_check_registry_kstring("QORIN_TEST_VALUE"), value);
    EXPECT_STREQ(qorin::getenv_check_registry_legacy("QORIN_TEST_VALUE"), value.c_str());
  }
}

TEST(Environment, EmptyCountsAsAbsent) {
  ScopedEnvironmentVariable variable("QORIN_TEST_EMPTY", "");
  std::string read = "untouched";
  EXPECT_FALSE(qorin::getEnvKstringAllowEmpty("QORIN_TEST_EMPTY", &read));
  EXPECT_FALSE(qorin::getEnvKstringAllowEmpty("QORIN_TEST_NEVER_SET", &read));
  EXPECT_FALSE(qorin::getenv_check_registry_kstring_allow_empty("QORIN_TEST_NEVER_SET", &read));
  EXPECT_EQ(read, "untouched");
  EXPECT_EQ(qorin::getEnvKstring("QORIN_TEST_EMPTY"), "");
  EXPECT_EQ(qorin::getenv_check_registry_kstring("QORIN_TEST_NEVER_SET"), "");
  EXPECT_EQ(qorin::getenv_check_registry_legacy("QORIN_TEST_NEVER_SET"), nullptr);
  EXPECT_FALSE(qorin::getenv_from_registry_only("QORIN_TEST_NEVER_SET", &read));
}

TEST(Environment, RefusalIsReportedAsBadAlloc) {
  EXPECT_THROW(qorin::putEnvKstring("QORIN=TEST", "x"), std::bad_alloc);
}

TEST(Environment, LegacyResultLivesUntilTheSameThreadCallsAgain) {
  ScopedEnvironmentVariable first("QORIN_TEST_FIRST", "one");
  ScopedEnvironmentVariable second("QORIN_TEST_SECOND", "two");
  const char* kept = qorin::getenv_check_registry_legacy("QORIN_TEST_FIRST");
  std::thread([] { EXPECT_STREQ(qorin::getenv_check_registry_legacy("QORIN_TEST_SECOND"), "two"); }).join();
  EXPECT_STREQ(kept, "one");
  EXPECT_EQ(qorin::getenv_check_registry_legacy("QORIN_TEST_NEVER_SET"), nullptr);
  EXPECT_STREQ(kept, "one");
  EXPECT_STREQ(qorin::getenv_check_registry_legacy("QORIN_TEST_SECOND"), "two");
}

}  // namespace
