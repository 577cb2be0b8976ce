// POSIX only: names are already UTF-8, so these are the plain calls.
#include "fs/fs_os.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace qorin {

using detail::call_with_native;
using detail::stdfs::path;

int access_utf8(const std::string& name, int mode) {
  return call_with_native(name, -1, [&](const path& p) { return ::access(p.c_str(), mode); });
}

int stat_utf8(const std::string& name, FileStatus* status) {
  return call_with_native(name, -1, [&](const path& p) { return ::stat(p.c_str(), status); });
}

int chmod_utf8(const std::string& name, int mode) {
  return call_with_native(name, -1, [&](const path& p) { return ::chmod(p.c_str(), static_cast<mode_t>(mode)); });
}

int open_utf8(const std::string& name, int flags, int mode) {
  return call_with_native(name, -1, [&](const path& p) { return ::open(p.c_str(), flags | O_CLOEXEC, mode); });
}

FILE* freopen_utf8(const std::string& name, const std::string& mode, FILE* stream) {
  return call_with_native(name, static_cast<FILE*>(nullptr),
                          [&](const path& p) { return std::freopen(p.c_str(), mode.c_str(), stream); });
}

char* tempnam_utf8(const char* dir, const char* prefix) {
  // tempnam itself draws a linker warning; a name that mkstemp reserved and
  // released serves the same purpose.
  const char* tmpdir = std::getenv("TMPDIR");
  std::string name = dir && *dir ? dir : tmpdir && *tmpdir ? tmpdir : "/tmp";
  if (name.back() != '/') name += '/';
  name += std::string(prefix ? prefix : "") + "XXXXXX";
  const int fd = ::mkstemp(name.data());
  if (fd < 0) return nullptr;
  ::close(fd);
  ::unlink(name.c_str());
  return ::strdup(name.c_str());
}

}  // namespace qorin
