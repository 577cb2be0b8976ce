#include <qorin/debug.h>

#include "support/scoped_environment.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using qorin::Debug::Flag;

// Readers must always see one whole setting; the registry's users (register,
// unregister, reinitialize, dump) must not deadlock with them.
TEST(FlagConcurrency, ReadersWhileReinitializing) {
  qorin::testing::ScopedEnvironmentVariable variable("_QDX_DEBUG_FLAGS", "CA=1");
  Flag::reinitializeFlags(false);
  Flag a("CA");
  Flag b("CB");
  std::atomic<bool> stop{false};
  std::atomic<int> odd{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      while (!stop.load()) {
        const std::string number = a.asString();
        const std::string text = b.asString();
        if (!a.isSet() || (number != "1" && number != "2") || (text != "" && text != "x,y")) ++odd;
        if (b.isString() && b.asNumber() != 0) ++odd;
      }
    });
  }
  threads.emplace_back([&] {
    while (!stop.load()) Flag temporary("CTEMP");
  });
  for (int round = 0; round < 300; ++round) {
    qorin::putEnvKstring("_QDX_DEBUG_FLAGS", round % 2 ? "CA=2,CB='x,y',CTEMP" : "CA=1");
    Flag::reinitializeFlags(false);
  }
  stop = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(odd.load(), 0);
}

}  // namespace
