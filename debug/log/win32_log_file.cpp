// Windows only: log files through the C runtime's low-level open and
// write, local time by _localtime64_s.
#include "debug/log/log_file.h"

#include "debug/log/standard_descriptors.h"

#include <qorin/fs.h>

#include "platform/win32_api.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace qorin::Debug::detail {

int openLogFile(const std::string& utf8Name) {
  occupyStandardDescriptors();
  // The runtime rejects permission bits other than these two.
  return open_utf8(utf8Name, _O_WRONLY | _O_APPEND | _O_CREAT | _O_NOINHERIT | _O_BINARY,
                  _S_IREAD | _S_IWRITE);
}

bool appendToLogFile(int fd, const char* data, std::size_t size) {
  // One byte far past any real end of file serves as the lock: a lock on the
  // data itself would make readers of the log fail while a line is written.
  const HANDLE file = reinterpret_cast<HANDLE>(::_get_osfhandle(fd));
  OVERLAPPED where{};
  where.Offset = 0xFFFFFFFFu;
  where.OffsetHigh = 0x7FFFFFFFu;
  const bool locked = ::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &where) != 0;
  const bool written = writeAll(fd, data, size);
  const int error = errno;
  if (locked) ::UnlockFileEx(file, 0, 1, 0, &where);
  errno = error;
  return written;
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
