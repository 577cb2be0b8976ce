// The UTF-8 file functions built on Path members, and the path text helpers.
#include "fs/fs_os.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace qorin {

namespace {

// 0 when the member answers true; -1 when it answers false or throws, with
// errno EINVAL when it refused the name.
template <class F>
int status_of_member(F member) noexcept {
  try {
    return member() ? 0 : -1;
  } catch (const std::filesystem::filesystem_error& e) {
    if (e.code() == std::errc::invalid_argument) errno = EINVAL;
    return -1;
  } catch (...) {
    return -1;
  }
}

}  // namespace

int mkdir_utf8(const std::string& path) {
  return status_of_member([&] { return Path(path).create_directory(); });
}
int mkpath_utf8(const std::string& path) {
  return status_of_member([&] { return Path(path).create_directories(); });
}
int rmdir_utf8(const std::string& path) {
  return status_of_member([&] { return Path(path).delete_directory(); });
}
int unlink_utf8(const std::string& path) {
  return status_of_member([&] { return Path(path).delete_file(); });
}
int remove_utf8(const std::string& path) { return unlink_utf8(path); }
int rename_utf8(const std::string& from, const std::string& to) {
  return status_of_member([&] {
    Path(from).rename(Path(to));
    return true;
  });
}

int chdir_utf8(const Path& dir) {
  if (detail::has_zero_unit(dir.fs_path())) {
    errno = EINVAL;
    return -1;
  }
  return detail::os_chdir(dir.fs_path());
}

unsigned long long filesize_utf8(const std::string& path) {
  try {
    return Path(path).file_size();
  } catch (...) {
    return 0;
  }
}

std::string getcwd_utf8() { return Path::current_path().string(); }

char* getcwd_utf8_legacy(char* buffer, int size) {
  const std::string cwd = getcwd_utf8();
  if (buffer == nullptr) {
    const std::size_t bytes = std::max<std::size_t>(cwd.size() + 1, size > 0 ? std::size_t(size) : 0);
    buffer = static_cast<char*>(std::malloc(bytes));
    if (buffer == nullptr) {
      errno = ENOMEM;
      return nullptr;
    }
  } else if (size <= 0) {
    errno = EINVAL;
    return nullptr;
  } else if (cwd.size() + 1 > std::size_t(size)) {
    errno = ERANGE;
    return nullptr;
  }
  std::memcpy(buffer, cwd.c_str(), cwd.size() + 1);
  return buffer;
}

std::string fixFilenameSlashes(const std::string& path) {
  std::string fixed = path;
  std::replace(fixed.begin(), fixed.end(), '/', '\\');
  return fixed;
}

std::string simplify_path(const std::string& path) {
  Path simple = Path(path).normalize();
  // A root is its own parent and keeps its separator.
  while (simple.ends_with_separator() && simple.parent_path() != simple) {
    std::string text = simple.string();
    text.pop_back();
    simple = Path(text);
  }
  return simple.string();
}

std::string canonical_path(const std::string& path) {
  const Path p(path);
  return simplify_path(p.is_absolute() ? path : p.absolute().string());
}

std::string get_directory_from_file(const std::string& path) {
  return Path(canonical_path(path)).parent_path().string();
}

}  // namespace qorin
