// Windows only: paths are UTF-16, the C runtime's wide calls do the work.
#include "fs/fs_os.h"
#include "fs/path_lexical.h"

#include "platform/win32_api.h"

#include <qorin/text.h>

#include <bcrypt.h>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>

namespace qorin::detail {

stdfs::path os_path_from_utf8(std::string_view utf8) {
  std::string text(utf8);
  std::replace(text.begin(), text.end(), '/', '\\');
  return stdfs::path(toWString(text));
}

std::string os_utf8_from_path(const stdfs::path& path) { return toKString(path.native()); }
std::u16string os_utf16_from_path(const stdfs::path& path) {
  return std::u16string(path.native().begin(), path.native().end());
}
std::wstring os_wide_from_path(const stdfs::path& path) { return path.native(); }

namespace {

// The current directory of drive `drive` ("C:"): the shell keeps each in
// "=C:" and the like; the current drive's is the current directory even
// when its variable is unset (as GetFullPathNameW has it); another drive
// without one is taken at its root.
std::wstring drive_directory(std::wstring_view drive, std::error_code& ec) {
  constexpr DWORD kBuffer = 10000;
  const std::wstring name = L"=" + std::wstring(drive);
  std::wstring dir(kBuffer, L'\0');
  const DWORD length = ::GetEnvironmentVariableW(name.c_str(), dir.data(), kBuffer);
  if (length > 0 && length < kBuffer) {
    dir.resize(length);
    ec.clear();
    return dir;
  }
  std::wstring cwd = stdfs::current_path(ec).native();
  if (ec) return {};
  const std::wstring_view cwd_view(cwd);
  const RootSpan cwd_root = split_root(cwd_view, PathStyle::windows);
  if (compare_text(cwd_view.substr(0, cwd_root.name_end), drive, PathStyle::windows) == 0) return cwd;
  return std::wstring(drive) + L"\\";
}

}  // namespace

stdfs::path os_absolute(const stdfs::path& path, std::error_code& ec) {
  const std::wstring_view text(path.native());
  const RootSpan root = split_root(text, PathStyle::windows);
  if (root.name_end > 0 && root.end == root.name_end) {
    const std::wstring dir = drive_directory(text.substr(0, root.name_end), ec);
    return ec ? stdfs::path() : stdfs::path(append_text<wchar_t>(dir, text.substr(root.end), PathStyle::windows));
  }
  const std::wstring cwd = stdfs::current_path(ec).native();
  return ec ? stdfs::path() : stdfs::path(append_text<wchar_t>(cwd, text, PathStyle::windows));
}

bool os_means_not_found(const std::error_code& ec) {
  if (ec.category() == std::system_category()) {
    switch (ec.value()) {
      case ERROR_FILE_NOT_FOUND:
      case ERROR_PATH_NOT_FOUND:
      case ERROR_BAD_NETPATH:
      case ERROR_INVALID_NAME:
        return true;
    }
  }
  return ec == std::errc::no_such_file_or_directory || ec == std::errc::not_a_directory ||
         ec == std::errc::invalid_argument;
}

bool os_access(const stdfs::path& path, int mode) { return ::_waccess(path.c_str(), mode) == 0; }

int os_chdir(const stdfs::path& path) { return ::_wchdir(path.c_str()); }

FILE* os_fopen(const stdfs::path& path, const char* mode) {
  return ::_wfopen(path.c_str(), toWString(mode_not_inherited(mode, 'N')).c_str());
}

namespace {

// Volume and file number, through a handle that any sharing mode allows.
bool file_identity(const stdfs::path& path, BY_HANDLE_FILE_INFORMATION* info) {
  win32::UniqueHandle file{::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)};
  return file.get() != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(file.get(), info);
}

}  // namespace

bool os_same_file(const stdfs::path& a, const stdfs::path& b, std::error_code& ec) {
  BY_HANDLE_FILE_INFORMATION ia, ib;
  if (!file_identity(a, &ia) || !file_identity(b, &ib)) {
    ec.assign(static_cast<int>(::GetLastError()), std::system_category());
    return false;
  }
  ec.clear();
  return ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber && ia.nFileIndexHigh == ib.nFileIndexHigh &&
         ia.nFileIndexLow == ib.nFileIndexLow;
}

std::uint64_t os_random_64() {
  std::uint64_t value = 0;
  if (::BCryptGenRandom(nullptr, reinterpret_cast<PUCHAR>(&value), sizeof value, BCRYPT_USE_SYSTEM_PREFERRED_RNG) != 0)
    throw std::system_error(std::make_error_code(std::errc::io_error), "BCryptGenRandom");
  return value;
}

std::error_code os_create_private_directory(const stdfs::path& path) {
  // CreateDirectoryW fails on any existing name, a reparse point included.
  if (!::CreateDirectoryW(path.c_str(), nullptr))
    return {static_cast<int>(::GetLastError()), std::system_category()};
  return {};
}

std::error_code os_create_private_file(const stdfs::path& path) {
  win32::UniqueHandle file{::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)};
  if (file.get() == INVALID_HANDLE_VALUE) return {static_cast<int>(::GetLastError()), std::system_category()};
  return {};
}

}  // namespace qorin::detail
