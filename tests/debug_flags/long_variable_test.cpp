#include <qorin/debug.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qorin::Debug::Flag;

// Windows caps an environment variable at 32,767 UTF-16 units.
constexpr std::size_t kLongVariable = sizeof(wchar_t) == 2 ? 30000 : 1000000;

TEST(LongVariable, OneQuotedValue) {
  const std::string text(kLongVariable - 10, 't');
  qorin::testing::ScopedEnvironmentVariable variable("_QDX_DEBUG_FLAGS", "BIG=\"" + text + "\",N=2");
  Flag big("BIG");
  Flag n("N");
  Flag::reinitializeFlags(false);
  EXPECT_EQ(big.asString(), text);
  EXPECT_EQ(n.asNumber(), 2.0);
}

TEST(LongVariable, ManyEntries) {
  std::string text;
  int entries = 0;
  while (text.size() < kLongVariable - 20) text += "F" + std::to_string(entries++) + "=1,";
  qorin::testing::ScopedEnvironmentVariable variable("_QDX_DEBUG_FLAGS", text + "LAST='end'");
  Flag first("F0");
  const std::string lastName = "F" + std::to_string(entries - 1);
  Flag last(lastName.c_str());
  Flag end("LAST");
  Flag::reinitializeFlags(false);
  EXPECT_EQ(first.asNumber(), 1.0);
  EXPECT_EQ(last.asNumber(), 1.0);
  EXPECT_EQ(end.asString(), "end");
}

}  // namespace
