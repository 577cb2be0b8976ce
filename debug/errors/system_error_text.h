// The operating system's own text for an error code, as the system gives it
// (converted to UTF-8, not trimmed). One implementation per platform:
// win32_system_error_text.cpp, posix_system_error_text.cpp.
#pragma once

#include <string>

namespace qorin::detail {

std::string systemErrorText(unsigned long code);

}  // namespace qorin::detail
