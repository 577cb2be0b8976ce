// Starting a program with its standard output and standard error on two
// pipes of the tool's own (standard input is inherited), reading both until
// every writer has closed them, and waiting for the program. One
// implementation per platform: posix_child_process.cpp,
// win32_child_process.cpp.
//
// While it runs, the interrupt signals reaching the tool go to the program,
// as a shell passes them on (POSIX: SIGINT, SIGTERM, SIGHUP and SIGQUIT sent
// to the tool alone; the terminal's Ctrl-C reaches both already. Windows:
// Ctrl-C and Ctrl-Break reach the program through the console, and the tool
// lets them pass).
//
// Example:
//   runChildProcess({"sh", "-c", "echo a; echo b >&2"}, [](ChildStream s, std::string_view bytes) {
//     ...;            // (output, "a\n") and (error, "b\n"), in the order they arrive
//     return true;    // false: stop reading that stream (its writer then sees a broken pipe)
//   })                => {started: true, status: 0}
//   runChildProcess({"no-such-program"}, ...)  => {started: false, error: "No such file or directory"}
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qorin::tool {

enum class ChildStream { output, error };

// Called with each chunk as it is read, never concurrently.
using ChildChunkReceiver = std::function<bool(ChildStream, std::string_view)>;

struct ChildResult {
  bool started = false;
  // The program's exit status: 128 + the signal number when a signal ended
  // it (POSIX), the full 32-bit exit code, exception codes included (Windows).
  int status = 0;
  // Why it could not be started, in the system's words.
  std::string error;
};

// Runs `arguments` (program first, found through the search path) to its
// end, handing what it writes to `receive`.
ChildResult runChildProcess(const std::vector<std::string>& arguments, const ChildChunkReceiver& receive);

}  // namespace qorin::tool
