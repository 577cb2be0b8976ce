// The OS operations behind log files and log lines. One implementation per
// platform: posix_log_file.cpp, win32_log_file.cpp.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>

namespace qorin::Debug::detail {

// Opens a UTF-8 named file for appending, creating it with permission 0644
// (read and write for the owner on Windows), not inherited by child
// processes. Returns the descriptor, or -1 with errno set.
int openLogFile(const std::string& utf8Name);

// One low-level write: the count written, or -1 with errno set.
long writeSome(int fd, const char* data, std::size_t size);

// One low-level close: 0, or -1 with errno set.
int closeOnce(int fd);

// Appends all of `size` bytes at the end of the file as one piece for every
// process that appends to it through this function (on Windows under a lock
// of the file: the runtime's append mode seeks and writes in two steps);
// false with errno set on failure.
bool appendToLogFile(int fd, const char* data, std::size_t size);

// Writes all of `size` bytes, retrying short and interrupted writes; false on
// failure. (log_file.cpp, for both platforms.)
bool writeAll(int fd, const char* data, std::size_t size);

// Closes a descriptor, retrying when a signal interrupts the close.
void closeLogFile(int fd);

// The local time of `seconds` since 1970; false when it cannot be converted.
bool localTime(long long seconds, std::tm& out);

}  // namespace qorin::Debug::detail
