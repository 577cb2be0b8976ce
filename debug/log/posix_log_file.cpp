// POSIX only: log files through open/write/close, local time by localtime_r.
#include "debug/log/log_file.h"

#include "debug/log/standard_descriptors.h"

#include <qorin/fs.h>

#include <fcntl.h>
#include <unistd.h>

namespace qorin::Debug::detail {

int openLogFile(const std::string& utf8Name) {
  occupyStandardDescriptors();
  return open_utf8(utf8Name, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
}

// O_APPEND makes each write land whole at the end.
bool appendToLogFile(int fd, const char* data, std::size_t size) { return writeAll(fd, data, size); }

long writeSome(int fd, const char* data, std::size_t size) { return static_cast<long>(::write(fd, data, size)); }

int closeOnce(int fd) { return ::close(fd); }

bool localTime(long long seconds, std::tm& out) {
  const std::time_t time = static_cast<std::time_t>(seconds);
  return ::localtime_r(&time, &out) != nullptr;
}

}  // namespace qorin::Debug::detail
