#include <qorin/debug.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

namespace {

using qorin::Debug::Flag;

// Its own executable: the variable must not have been read before this runs.
TEST(FlagLazyRead, FirstFlagReadsTheVariableOnce) {
  qorin::testing::ScopedEnvironmentVariable variable("_QDX_DEBUG_FLAGS", "EARLY=7");
  EXPECT_EQ(Flag::flagCount(), 0u);
  Flag early("EARLY");
  EXPECT_EQ(early.asNumber(), 7.0);
  qorin::putEnvKstring("_QDX_DEBUG_FLAGS", "LATE=1");
  Flag late("LATE");
  EXPECT_FALSE(late.isSet());
  EXPECT_EQ(Flag::flagCount(), 2u);

  Flag::reinitializeFlags(false);
  EXPECT_TRUE(late.isSet());
  EXPECT_FALSE(early.isSet());
}

}  // namespace
