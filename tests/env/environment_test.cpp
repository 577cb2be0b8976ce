#include <qorin/env.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <thread>

namespace {

using qorin::testing::ScopedEnvironmentVariable;

TEST(Environment, ValuesRoundTripInUtf8) {
  // Either side of the 5000-character first buffer, and far beyond it.
  const std::string values[] = {"Gr\xc3\xbc\xc3\x9f" "e \xe2\x9c\x93", std::string(4999, 'v'), std::string(5000, 'w'),
                                std::string(12000, 'x') + "\xf0\x9f\x98\x80"};
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
  for (const char* name : {"QORIN_TEST_EMPTY", "QORIN_TEST_NEVER_SET"}) {
    std::string read = "untouched";
    EXPECT_FALSE(qorin::getEnvKstringAllowEmpty(name, &read)) << name;
    EXPECT_FALSE(qorin::getenv_check_registry_kstring_allow_empty(name, &read)) << name;
    EXPECT_FALSE(qorin::getenv_from_registry_only(name, &read)) << name;
    EXPECT_EQ(read, "untouched") << name;
    EXPECT_EQ(qorin::getEnvKstring(name), "") << name;
    EXPECT_EQ(qorin::getenv_check_registry_kstring(name), "") << name;
    EXPECT_EQ(qorin::getenv_check_registry_legacy(name), nullptr) << name;
  }
}

TEST(Environment, RefusalIsReportedAsBadAlloc) {
  EXPECT_THROW(qorin::putEnvKstring("QORIN=TEST", "x"), std::bad_alloc);
}

TEST(Environment, LegacyResultLivesUntilTheSameThreadCallsAgain) {
  ScopedEnvironmentVariable first("QORIN_TEST_FIRST", "one");
  ScopedEnvironmentVariable second("QORIN_TEST_SECOND", "two");
  const char* kept = qorin::getenv_check_registry_legacy("QORIN_TEST_FIRST");
  std::thread([] { EXPECT_STREQ(qorin::getenv_check_registry_legacy("QORIN_TEST_SECOND"), "two"); }).join();
  EXPECT_EQ(qorin::getenv_check_registry_legacy("QORIN_TEST_NEVER_SET"), nullptr);
  EXPECT_STREQ(kept, "one");
}

}  // namespace
