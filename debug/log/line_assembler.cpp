#include "debug/log/line_assembler.h"

#include <algorithm>
#include <cstring>

namespace qorin::Debug::detail {

void LineAssembler::feed(const char* data, std::size_t size, const Deliver& deliver) {
  while (size > 0) {
    const std::size_t room = maxLength_ - line_.size();
    const std::size_t take = std::min(size, room);
    const void* feed = std::memchr(data, '\n', take);
    const std::size_t segment = feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - data) + 1 : take;
    if (line_.empty() && (feed || segment == maxLength_) && !std::memchr(data, '\r', segment)) {
      // The common case: a whole line in the chunk, handed over uncopied.
      deliver(std::string_view(data, segment));
      data += segment;
      size -= segment;
      continue;
    }
    // Copies the segment around its carriage returns.
    for (const char *from = data, *end = data + segment; from < end;) {
      const void* cr = std::memchr(from, '\r', static_cast<std::size_t>(end - from));
      const char* stop = cr ? static_cast<const char*>(cr) : end;
      line_.append(from, static_cast<std::size_t>(stop - from));
      from = cr ? stop + 1 : end;
    }
    data += segment;
    size -= segment;
    if (feed || line_.size() >= maxLength_) {
      deliver(line_);
      line_.clear();
    }
  }
}

void LineAssembler::flush(const Deliver& deliver) {
  if (line_.empty()) return;
  line_ += '\n';
  deliver(line_);
  line_.clear();
}

}  // namespace qorin::Debug::detail
