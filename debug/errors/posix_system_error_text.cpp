// POSIX only: error texts from strerror_r.
#include "debug/errors/system_error_text.h"

#include <cstring>

namespace qorin::detail {
namespace {

// The GNU strerror_r returns the text, which need not be in the buffer.
[[maybe_unused]] std::string strerrorResult(const char* text, const char*) { return text; }

// The XSI strerror_r returns 0 or an error number and fills the buffer; on an
// unknown code the buffer still holds the system's "unknown error" text.
[[maybe_unused]] std::string strerrorResult(int, const char* buffer) { return buffer; }

}  // namespace

std::string systemErrorText(unsigned long code) {
  char buffer[1024] = {};
  return strerrorResult(strerror_r(static_cast<int>(code), buffer, sizeof buffer), buffer);
}

}  // namespace qorin::detail
