#include <qorin/debug.h>

#include "support/temporary_file_name.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace qorin::Debug;

// Every line exactly once, untorn, each thread's lines in its own order.
TEST(LogConcurrency, EightThreadsIntoOneFile) {
  constexpr int kThreads = 8;
  constexpr int kLines = 10000;
  qorin::testing::TemporaryFileName log("threads");
  {
    Multiplexer mux;
    mux.addFileOutput(log.name());
    mux.enableThreadIDs(true);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&mux, t] {
        for (int i = 0; i < kLines; ++i) mux.logLogMsgArgs("thread %d line %d of a test text\n", t, i);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  std::istringstream text(log.read());
  std::vector<int> next(kThreads, 0);
  std::string line;
  int count = 0;
  while (std::getline(text, line)) {
    int thread = -1;
    int index = -1;
    char tail[32] = {};
    ASSERT_EQ(std::sscanf(line.c_str(), "l:T%*d: thread %d line %d %31[a-z ]", &thread, &index, tail), 3) << line;
    ASSERT_EQ(std::string(tail), "of a test text") << line;
    ASSERT_TRUE(thread >= 0 && thread < kThreads) << line;
    ASSERT_EQ(index, next[thread]) << line;
    ++next[thread];
    ++count;
  }
  EXPECT_EQ(count, kThreads * kLines);
}

}  // namespace
