#include <qorin/text.h>

#include <cstdlib>

namespace qorin {

std::string padString(const std::string& text, int width) {
  if (width == 0) return text;
  // Widen before negating: -INT_MIN overflows an int.
  const std::uint64_t wanted = static_cast<std::uint64_t>(std::llabs(static_cast<long long>(width)));
  if (text.size() >= wanted) return text;
  const std::string padding = repeatChar(' ', wanted - text.size());
  return width > 0 ? padding + text : text + padding;
}

std::string repeatChar(char c, std::uint64_t count) { return std::string(count, c); }

}  // namespace qorin
