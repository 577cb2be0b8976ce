// Windows only: log files through the C runtime's low-level open and
// write, local time by _localtime64_s.
#include "debug/log_file.h"

#include <qorin/fs.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace qorin::Debug::detail {

int openLogFile(const std::string& utf8Name) {
  // The runtime rejects permission bits other than these two.
  return open_utf8(utf8Name, _O_WRONLY | _O_APPEND | _O_CREAT | _O_NOINHERIT | _O_BINARY,
                  _S_IREAD | _S_IWRITE);
}

long writeSome(int fd, const char* data, std::size_t size) {
  // _write takes an unsigned count; the caller writes the rest.
  return ::_write(fd, data, size > 0x40000000u ? 0x40000000u : static_cast<unsigned>(size));
}

int closeOnce(int fd) { return ::_close(fd); }

bool localTime(long long seconds, std::tm& out) {
  const __time64_t time = seconds;
  return ::_localtime64_s(&out, &time) == 0;
}

}  // namespace qorin::Debug::detail
