#include "stream_lines.h"

#include <qorin/debug.h>

namespace qorin::tool {

namespace {
const std::size_t kMaxLine = static_cast<std::size_t>(Debug::MAX_LINE_LENGTH);
}

void StreamLines::add(std::string_view bytes, const LineSink& sink) {
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const bool complete = end != std::string_view::npos;
    const std::string_view piece = bytes.substr(0, complete ? end + 1 : bytes.size());
    bytes.remove_prefix(piece.size());
    // The common case, a whole clean line in one chunk, is handed over
    // without a copy.
    if (complete && partial_.empty() && piece.size() <= kMaxLine && piece.find('\r') == std::string_view::npos) {
      sink(piece);
      continue;
    }
    appendWithoutCarriageReturns(piece, sink);
    if (complete && !partial_.empty()) {
      sink(partial_);
      partial_.clear();
    }
  }
}

void StreamLines::appendWithoutCarriageReturns(std::string_view piece, const LineSink& sink) {
  for (char c : piece) {
    if (c == '\r') continue;
    partial_ += c;
    if (partial_.size() == kMaxLine) {
      sink(partial_);
      partial_.clear();
    }
  }
}

void StreamLines::finish(const LineSink& sink) {
  if (partial_.empty()) return;
  partial_ += '\n';
  sink(partial_);
  partial_.clear();
}

}  // namespace qorin::tool
