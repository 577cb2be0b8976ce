// POSIX only: log files through open/write/close, local time by localtime_r.
#include "debug/log_file.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace qorin::Debug::detail {

int openLogFile(const std::string& utf8Name) {
  return ::open(utf8Name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
}

bool writeLogFile(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

void closeLogFile(int fd) {
  // Linux releases the descriptor even when close reports EINTR; a retry
  // then fails harmlessly with EBADF.
  while (::close(fd) != 0 && errno == EINTR) {
  }
}

bool localTime(long long seconds, std::tm& out) {
  const std::time_t time = static_cast<std::time_t>(seconds);
  return ::localtime_r(&time, &out) != nullptr;
}

}  // namespace qorin::Debug::detail
