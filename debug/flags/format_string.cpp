#include <qorin/debug.h>

#include <cstdarg>
#include <cstdio>
#include <stdexcept>

namespace qorin::Debug {

std::string formatString(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  char buffer[1000];
  const int length = std::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  std::string result;
  if (length >= 0 && static_cast<std::size_t>(length) < sizeof buffer) {
    result.assign(buffer, static_cast<std::size_t>(length));
  } else if (length >= 0) {
    // Too long for the buffer: the first pass measured it exactly.
    result.resize(static_cast<std::size_t>(length));
    std::vsnprintf(result.data(), result.size() + 1, format, again);
  }
  va_end(again);
  if (length < 0) throw std::runtime_error(std::string("formatString: cannot apply format \"") + format + "\"");
  return result;
}

}  // namespace qorin::Debug
