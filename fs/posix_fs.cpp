// POSIX only: paths are the UTF-8 bytes themselves.
#include "fs/fs_os.h"

#include <qorin/text.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

namespace qorin::detail {

// A name on POSIX is bytes: one that is not UTF-8 reads back as its own
// bytes (string()), and those bytes must name the same file again.
stdfs::path os_path_from_utf8(std::string_view utf8) { return stdfs::path(std::string(utf8)); }

std::string os_utf8_from_path(const stdfs::path& path) { return path.native(); }
std::u16string os_utf16_from_path(const stdfs::path& path) { return toUtf16(path.native()); }
std::wstring os_wide_from_path(const stdfs::path& path) { return toWString(path.native()); }

stdfs::path os_absolute(const stdfs::path& path, std::error_code& ec) {
  const stdfs::path cwd = stdfs::current_path(ec);
  return ec ? stdfs::path() : cwd / path;
}

bool os_means_not_found(const std::error_code& ec) {
  return ec == std::errc::no_such_file_or_directory || ec == std::errc::not_a_directory ||
         ec == std::errc::filename_too_long;
}

bool os_access(const stdfs::path& path, int mode) { return ::access(path.c_str(), mode) == 0; }

int os_chdir(const stdfs::path& path) { return ::chdir(path.c_str()); }

FILE* os_fopen(const stdfs::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode_not_inherited(mode, 'e').c_str());
}

bool os_same_file(const stdfs::path& a, const stdfs::path& b, std::error_code& ec) {
  struct stat sa, sb;
  if (::stat(a.c_str(), &sa) != 0 || ::stat(b.c_str(), &sb) != 0) {
    ec.assign(errno, std::generic_category());
    return false;
  }
  ec.clear();
  return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

std::uint64_t os_random_64() {
  std::random_device device;  // the kernel's random source
  return (std::uint64_t{device()} << 32) | device();
}

std::error_code os_create_private_directory(const stdfs::path& path) {
  if (::mkdir(path.c_str(), 0700) != 0) return {errno, std::generic_category()};
  return {};
}

std::error_code os_create_private_file(const stdfs::path& path) {
  // O_EXCL with O_CREAT refuses an existing name, a symbolic link included.
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (fd < 0) return {errno, std::generic_category()};
  ::close(fd);
  return {};
}

}  // namespace qorin::detail
