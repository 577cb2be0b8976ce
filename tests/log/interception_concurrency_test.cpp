#include <qorin/debug.h>

#include "log/interception_child.h"

#include <cstdio>
#include <cstring>
#include <iostream>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace qorin::Debug;
using qorin::testing::interceptStreams;
using InterceptionConcurrency = qorin::testing::InterceptionTest;

// Checks lines "w<writer> <index> <padding>\n" as they arrive: each writer's
// lines exactly once, in order, untorn, with the type of its stream (only
// `errorWriter` writes standard error lines).
class SequenceCheck : public OutputHandler {
 public:
  SequenceCheck(int writers, int errorWriter) : next_(static_cast<std::size_t>(writers), 0), errorWriter_(errorWriter) {}
  void logMsg(MessageType type, const char* line, const char*) override {
    int writer = -1;
    int index = -1;
    int used = 0;
    const std::size_t length = std::strlen(line);
    if (std::sscanf(line, "w%d %d %n", &writer, &index, &used) != 2 || writer < 0 ||
        writer >= static_cast<int>(next_.size()) || index != next_[writer] || length != kLineLength ||
        line[length - 1] != '\n' || type != (writer == errorWriter_ ? ERR_MSG : STD_MSG)) {
      if (complaint_.size() < 2000) complaint_ += std::to_string(type) + "|" + line + "\n";
      return;
    }
    ++next_[writer];
  }
  std::string result(int lines) const {
    std::string text = complaint_;
    for (std::size_t w = 0; w < next_.size(); ++w) {
      if (next_[w] != lines) text += "writer " + std::to_string(w) + " got " + std::to_string(next_[w]) + "\n";
    }
    return text;
  }

  static constexpr std::size_t kLineLength = 24;
  static std::string line(int writer, int index) {
    char text[kLineLength + 1];
    std::snprintf(text, sizeof text, "w%d %d ", writer, index);
    std::string result = text;
    result.resize(kLineLength - 1, '.');
    return result + "\n";
  }

 private:
  std::vector<int> next_;
  int errorWriter_;
  std::string complaint_;
};

TEST_F(InterceptionConcurrency, FourWritersEveryLineOnceInOrder) {
  EXPECT_IN_CHILD([] {
    constexpr int kLines = 25000;
    qorinCoreLogStreamDoublePipeFlag().setNumericValue(1);
    auto check = std::make_shared<SequenceCheck>(4, 0);
    Logger::getInstance().multiplexer().addOutput(check);
    interceptStreams(true);
    // Writer 0 has standard error to itself: MinGW's printf writes a byte at
    // a time, which any other writer would tear. Writers 1 to 3 share
    // standard output, one through the C++ stream, two through the raw
    // descriptor.
    std::vector<std::thread> writers;
    writers.emplace_back([] {
      for (int i = 0; i < kLines; ++i) std::fprintf(stderr, "%s", SequenceCheck::line(0, i).c_str());
    });
    writers.emplace_back([] {
      for (int i = 0; i < kLines; ++i) std::cout << SequenceCheck::line(1, i);
    });
    for (int w : {2, 3}) {
      writers.emplace_back([w] {
        for (int i = 0; i < kLines; ++i) {
          const std::string text = SequenceCheck::line(w, i);
          if (::write(1, text.data(), static_cast<unsigned>(text.size())) != static_cast<int>(text.size())) return;
        }
      });
    }
    for (std::thread& writer : writers) writer.join();
    Logger::waitForStreamSync();
    return check->result(kLines);
  });
}

TEST_F(InterceptionConcurrency, SyncCoversEveryWriteBeforeIt) {
  EXPECT_IN_CHILD([] {
    auto output = interceptStreams(true);
    for (int i = 0; i < 2000; ++i) {
      const std::string text = SequenceCheck::line(0, i);
      if (::write(i % 2 == 0 ? 1 : 2, text.data(), static_cast<unsigned>(text.size())) < 0) return std::string("write");
      Logger::waitForStreamSync();
      if (output->lines().size() != static_cast<std::size_t>(i) + 1) return "sync " + std::to_string(i) + " too early\n";
    }
    return std::string();
  });
}

TEST_F(InterceptionConcurrency, HundredMegabytesThroughAPausedLogger) {
  EXPECT_IN_CHILD([] {
    constexpr int kLines = 100 * 1000 * 1000 / SequenceCheck::kLineLength;
    auto check = std::make_shared<SequenceCheck>(1, -1);
    Logger::getInstance().multiplexer().addOutput(check);
    interceptStreams(true, false);
    std::thread writer([] {
      std::string block;
      for (int i = 0; i < kLines; ++i) {
        block += SequenceCheck::line(0, i);
        if (block.size() >= 64 * 1024 || i + 1 == kLines) {
          if (std::fwrite(block.data(), 1, block.size(), stdout) != block.size()) return;
          block.clear();
        }
      }
    });
    Logger::start();  // the writer may already wait on a full pipe
    writer.join();
    Logger::waitForStreamSync();
    return check->result(kLines);
  });
}

}  // namespace
