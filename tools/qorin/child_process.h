// Starting a program that inherits the tool's standard streams, and waiting
// for it. One implementation per platform: posix_child_process.cpp,
// win32_child_process.cpp.
//
// Example:
//   std::string error;
//   runChildProcess({"solver", "-v"}, error)     => the solver's exit code
//   runChildProcess({"no-such-program"}, error)  => -1, error "No such file or directory"
#pragma once

#include <string>
#include <vector>

namespace qorin::tool {

// Runs `arguments` (program first, found through the search path) to its
// end. Returns its exit code (128 + the signal number when a signal ended
// it), or -1 with the system's reason in `error` when it could not start.
int runChildProcess(const std::vector<std::string>& arguments, std::string& error);

}  // namespace qorin::tool
