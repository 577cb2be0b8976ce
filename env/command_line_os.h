// What the command line needs from the platform (win32_command_line.cpp,
// posix_command_line.cpp). Texts are UTF-8 on this side.
#pragma once

#include <string>
#include <vector>

namespace qorin::detail {

// The process's own arguments in UTF-8, split the platform's way. False when
// the platform has no such source or splitting failed: the caller then takes
// the argv that main() received. Windows: GetCommandLineW split by
// CommandLineToArgvW; an unpaired surrogate throws utf8::invalid_utf16.
// POSIX: always false, since argv already holds the bytes the user typed.
bool os_command_line_arguments(std::vector<std::string>* arguments);

// The running executable's file name as the platform reports it (Windows:
// GetModuleFileNameW of the main module; Linux: /proc/self/exe). Throws
// std::runtime_error when the platform cannot tell, or when the name would
// need a buffer beyond 1000000 bytes.
std::string os_executable_file_name();

}  // namespace qorin::detail
