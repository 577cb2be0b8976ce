// A log output that records what the multiplexer hands it, as "<type>|line"
// (0 standard output, 1 standard error, 2 log). Handlers are called under
// the multiplexer's lock; its own mutex lets a test read while a stream
// thread delivers.
//
// Example:
//   auto output = std::make_shared<RecordingOutput>();
//   multiplexer.addOutput(output);
//   multiplexer.errLogMsg("x\n");   // output->lines() == {"1|x\n"}
#pragma once

#include <qorin/debug.h>

#include <mutex>
#include <string>
#include <vector>

namespace qorin::testing {

class RecordingOutput : public Debug::OutputHandler {
 public:
  void logMsg(Debug::MessageType type, const char* line, const char*) override {
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.push_back(std::to_string(static_cast<int>(type)) + "|" + line);
  }
  std::vector<std::string> lines() {
    std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace qorin::testing
