// Standard output and the end of a run, checked: a command's output that
// went nowhere (a full disk, a closed stream) is an error, never a success.
//
// Example: `qorin annotate --canonical 1 >/dev/full` prints
//   "qorin: write error: No space left on device" on standard error, status 2.
#pragma once

#include <string>
#include <string_view>

namespace qorin::tool {

// Writes `text` to standard output; a failure is remembered for
// finish_output and later writes are dropped.
void write_output(std::string_view text);

// Flushes and closes standard output (C streams and std::cout alike). On any
// failure so far prints "qorin: write error: <reason>" and returns kExitIo,
// else returns `status`.
int finish_output(int status);

// "qorin: read error: <name>: <reason>" on standard error; returns kExitIo.
int read_error(const std::string& name, int error_number);

}  // namespace qorin::tool
