#include "support/stream_capture.h"

#include <stdexcept>
#include <unistd.h>

namespace qorin::testing {

StreamCapture::StreamCapture(std::FILE* stream)
    : stream_(stream), sink_(std::tmpfile()), saved_fd_(-1) {
  if (!sink_) throw std::runtime_error("StreamCapture: tmpfile failed");
  std::fflush(stream_);
  saved_fd_ = dup(fileno(stream_));
  dup2(fileno(sink_), fileno(stream_));
}

StreamCapture::~StreamCapture() { release(); }

std::string StreamCapture::release() {
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

}  // namespace qorin::testing
