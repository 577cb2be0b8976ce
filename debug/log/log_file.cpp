#include "debug/log/log_file.h"

#include <cerrno>

namespace qorin::Debug::detail {

bool writeAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const long written = writeSome(fd, data, size);
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
  while (closeOnce(fd) != 0 && errno == EINTR) {
  }
}

}  // namespace qorin::Debug::detail
