// The process environment as the platform stores it (win32_environment.cpp,
// posix_environment.cpp). Names and values are UTF-8 on this side.
#pragma once

#include <string>

namespace qorin::detail {

// True and the value when the variable exists with a non-empty value.
bool os_read_environment(const std::string& name, std::string* value);

// Throws std::bad_alloc when the platform refuses, whatever the reason.
void os_write_environment(const std::string& name, const std::string& value);

}  // namespace qorin::detail
