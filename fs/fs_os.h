// The operating-system side of files and paths (win32_fs.cpp, posix_fs.cpp).
// Paths cross as standard paths in the native form; text as UTF-8.
#pragma once

#include <qorin/fs.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace qorin::detail {

namespace stdfs = std::filesystem;

// Known when compiling, so that the lexical core can fold it away.
constexpr PathStyle os_native_style() {
  return stdfs::path::preferred_separator == '\\' ? PathStyle::windows : PathStyle::posix;
}

// UTF-8 text to the native path (Windows: "/" becomes "\\", and invalid
// UTF-8 throws utf8::invalid_utf8; POSIX: the bytes as they are).
stdfs::path os_path_from_utf8(std::string_view utf8);
std::string os_utf8_from_path(const stdfs::path& path);
std::u16string os_utf16_from_path(const stdfs::path& path);
std::wstring os_wide_from_path(const stdfs::path& path);

// A relative path completed against the current directory; Windows takes a
// drive-relative path against that drive's own current directory.
stdfs::path os_absolute(const stdfs::path& path, std::error_code& ec);

// Status failures that only mean "nothing there".
bool os_means_not_found(const std::error_code& ec);

bool os_access(const stdfs::path& path, int mode);
// `mode` with the runtime's letter for a stream that no child inherits
// ('N' on Windows, 'e' in glibc), before any ",ccs=" part.
inline std::string mode_not_inherited(std::string_view mode, char letter) {
  std::string out(mode.substr(0, mode.find(',')));
  out += letter;
  if (mode.find(',') != std::string_view::npos) out += mode.substr(mode.find(','));
  return out;
}
// The runtime's chdir: 0, or -1 with errno.
int os_chdir(const stdfs::path& path);
FILE* os_fopen(const stdfs::path& path, const char* mode);

// Whether both name the same file (volume and file number); ec on failure.
bool os_same_file(const stdfs::path& a, const stdfs::path& b, std::error_code& ec);

// Random bits from the OS for unpredictable names.
std::uint64_t os_random_64();
// Creates exactly this directory (mode 0700) or file (mode 0600, closed);
// fails with errc::file_exists when anything, a link included, is there.
std::error_code os_create_private_directory(const stdfs::path& path);
std::error_code os_create_private_file(const stdfs::path& path);

// A zero unit ends the name at the system call, which would then act on
// another file («ab» for «ab\0cd»); such a name is refused instead.
inline bool has_zero_unit(const stdfs::path& path) {
  return path.native().find(stdfs::path::value_type()) != stdfs::path::string_type::npos;
}
inline std::error_code refused_name() { return std::make_error_code(std::errc::invalid_argument); }

// f(native path) for the C-style wrappers, which never throw: text that is
// not UTF-8, or that holds a zero, answers `failure` with errno EINVAL, as a
// bad name would.
template <class R, class F>
R call_with_native(const std::string& utf8, R failure, F f) noexcept {
  stdfs::path native;
  try {
    native = os_path_from_utf8(utf8);
  } catch (...) {
    errno = EINVAL;
    return failure;
  }
  if (has_zero_unit(native)) {
    errno = EINVAL;
    return failure;
  }
  return f(native);
}

}  // namespace qorin::detail
