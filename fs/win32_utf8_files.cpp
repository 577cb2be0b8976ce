// Windows only: the wide C runtime calls behind the UTF-8 wrappers.
#include "fs/fs_os.h"

#include <qorin/text.h>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <direct.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>

namespace qorin {

using detail::call_with_native;
using detail::stdfs::path;

int access_utf8(const std::string& name, int mode) {
  return call_with_native(name, -1, [&](const path& p) { return ::_waccess(p.c_str(), mode); });
}

int stat_utf8(const std::string& name, FileStatus* status) {
  return call_with_native(name, -1, [&](const path& p) { return ::_wstat64(p.c_str(), status); });
}

int chmod_utf8(const std::string& name, int mode) {
  return call_with_native(name, -1, [&](const path& p) { return ::_wchmod(p.c_str(), mode); });
}

int open_utf8(const std::string& name, int flags, int mode) {
  // Full sharing, so that a log another process holds open can still be
  // read; never inherited, so that a child cannot keep the file open.
  return call_with_native(name, -1, [&](const path& p) {
    return ::_wsopen(p.c_str(), flags | _O_NOINHERIT, _SH_DENYNO, mode);
  });
}

FILE* freopen_utf8(const std::string& name, const std::string& mode, FILE* stream) {
  return call_with_native(name, static_cast<FILE*>(nullptr), [&](const path& p) -> FILE* {
    try {
      return ::_wfreopen(p.c_str(), toWString(mode).c_str(), stream);
    } catch (...) {
      errno = EINVAL;
      return nullptr;
    }
  });
}

char* tempnam_utf8(const char* dir, const char* prefix) {
  try {
    const std::wstring wide_dir = dir ? toWString(dir) : std::wstring();
    const std::wstring wide_prefix = prefix ? toWString(prefix) : std::wstring();
    wchar_t* name = ::_wtempnam(dir ? wide_dir.c_str() : nullptr, prefix ? wide_prefix.c_str() : nullptr);
    if (!name) return nullptr;
    const std::string utf8 = toKString(std::wstring(name));
    std::free(name);
    return ::strdup(utf8.c_str());
  } catch (...) {
    errno = EINVAL;
    return nullptr;
  }
}

}  // namespace qorin
