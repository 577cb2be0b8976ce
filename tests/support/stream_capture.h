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
#include <string>

namespace qorin::testing {

class StreamCapture {
 public:
  explicit StreamCapture(std::FILE* stream);
  ~StreamCapture();
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  // Stops capturing and returns everything written since construction.
  std::string release();

 private:
  std::FILE* stream_;
  std::FILE* sink_;
  int saved_fd_;
};

}  // namespace qorin::testing
