// Captures what the code under test writes to a C stream (stdout or stderr)
// at the file-descriptor level, so printf, std::cerr and raw writes are all
// seen. Not thread-safe: capture from one test thread at a time.
//
// Example:
//   StreamCapture capture(stderr);
//   std::cerr << "x";
//   EXPECT_EQ(capture.release(), "x");
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace qorin::testing {

class StreamCapture {
 public:
  explicit StreamCapture(std::FILE* stream) : stream_(stream), sink_(std::tmpfile()) {
    if (!sink_) throw std::runtime_error("StreamCapture: tmpfile failed");
    std::fflush(stream_);
    saved_fd_ = dup(fileno(stream_));
    dup2(fileno(sink_), fileno(stream_));
  }
  ~StreamCapture() { release(); }
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  // Stops capturing and returns everything written since construction.
  std::string release() {
    if (saved_fd_ < 0) return {};
    std::fflush(stream_);
    dup2(saved_fd_, fileno(stream_));
    close(saved_fd_);
    saved_fd_ = -1;
    std::string text;
    std::rewind(sink_);
    char chunk[4096];
    for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, sink_)) > 0;) text.append(chunk, n);
    std::fclose(sink_);
    sink_ = nullptr;
    return text;
  }

 private:
  std::FILE* stream_;
  std::FILE* sink_;
  int saved_fd_ = -1;
};

}  // namespace qorin::testing
