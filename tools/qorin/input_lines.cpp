#include "input_lines.h"

#include <cerrno>
#include <cstring>

namespace qorin::tool {

namespace {
constexpr std::size_t kBlockBytes = 1 << 16;
}

InputLines::InputLines(std::FILE* file, std::size_t max_line_bytes)
    : file_(file), max_line_bytes_(max_line_bytes), block_(kBlockBytes) {}

bool InputLines::refill() {
  if (at_end_) return false;
  errno = 0;
  begin_ = 0;
  end_ = std::fread(block_.data(), 1, block_.size(), file_);
  if (end_ > 0) return true;
  at_end_ = true;
  if (std::ferror(file_)) error_number_ = errno != 0 ? errno : EIO;
  return false;
}

InputLines::Result InputLines::next(std::string* text) {
  text->clear();
  bool started = false;
  bool skipping = false;
  for (;;) {
    if (begin_ == end_ && !refill()) {
      if (error_number_ != 0) return read_error;
      if (!started) return end;
      break;  // a last line without "\n"
    }
    started = true;
    const char* from = block_.data() + begin_;
    const auto* newline = static_cast<const char*>(std::memchr(from, '\n', end_ - begin_));
    const std::size_t size = newline ? static_cast<std::size_t>(newline - from) : end_ - begin_;
    // "\r\n" counts as one line end, so a "\r" may pass the limit by one.
    if (!skipping && text->size() + size > max_line_bytes_ + 1) {
      skipping = true;
      std::string().swap(*text);
    }
    if (!skipping) text->append(from, size);
    begin_ += size + (newline ? 1 : 0);
    if (newline) break;
  }
  if (!text->empty() && text->back() == '\r') text->pop_back();
  if (skipping || text->size() > max_line_bytes_) {
    text->clear();
    return too_long;
  }
  return line;
}

}  // namespace qorin::tool
