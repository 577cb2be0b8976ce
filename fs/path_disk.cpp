// Path members that consult or change the disk. Each throwing member is its
// error-code twin plus the standard filesystem error naming the operation.
#include "fs/fs_os.h"

namespace qorin {

namespace stdfs = std::filesystem;

namespace {

[[noreturn]] void fail(const char* operation, const stdfs::path& path, std::error_code ec) {
  throw stdfs::filesystem_error(operation, path, ec);
}

// Before anything acts on the disk: a name the system would cut short.
void refuse_zero_unit(const char* operation, const stdfs::path& path) {
  if (detail::has_zero_unit(path)) fail(operation, path, detail::refused_name());
}

// The status, with "not found" and its platform relatives as not_found; a
// name with a zero in it names nothing.
stdfs::file_status status_of(const stdfs::path& path, std::error_code& ec, bool follow = true) {
  if (detail::has_zero_unit(path)) {
    ec.clear();
    return stdfs::file_status(stdfs::file_type::not_found);
  }
  stdfs::file_status status = follow ? stdfs::status(path, ec) : stdfs::symlink_status(path, ec);
  if (ec && detail::os_means_not_found(ec)) {
    ec.clear();
    status = stdfs::file_status(stdfs::file_type::not_found);
  }
  return status;
}

stdfs::file_status status_or_throw(const char* operation, const stdfs::path& path, bool follow = true) {
  std::error_code ec;
  const stdfs::file_status status = status_of(path, ec, follow);
  if (ec) fail(operation, path, ec);
  return status;
}

// Something there, a dangling symbolic link included.
bool anything_at(const stdfs::path& path, std::error_code& ec, const char** failed_operation) {
  *failed_operation = "exists";
  if (stdfs::exists(status_of(path, ec))) return true;
  if (ec) return false;
  *failed_operation = "symlink_status";
  return stdfs::exists(status_of(path, ec, false));
}

}  // namespace

bool Path::exists(std::error_code& ec) const {
  const stdfs::file_status status = status_of(path_, ec);
  return !ec && stdfs::exists(status);
}

bool Path::exists() const { return stdfs::exists(status_or_throw("exists", path_)); }

bool Path::is_directory(std::error_code& ec) const {
  const stdfs::file_status status = status_of(path_, ec);
  return !ec && stdfs::is_directory(status);
}

bool Path::is_directory() const { return stdfs::is_directory(status_or_throw("status", path_)); }

bool Path::is_regular_file() const { return stdfs::is_regular_file(status_or_throw("status", path_)); }

bool Path::is_readable() const { return !detail::has_zero_unit(path_) && detail::os_access(path_, 4); }
bool Path::is_writable() const { return !detail::has_zero_unit(path_) && detail::os_access(path_, 2); }

std::uint64_t Path::file_size() const {
  refuse_zero_unit("file_size", path_);
  std::error_code ec;
  const std::uintmax_t size = stdfs::file_size(path_, ec);
  if (ec) fail("file_size", path_, ec);
  return size;
}

bool Path::create_directory() const {
  refuse_zero_unit("create_directory", path_);
  if (is_directory()) return true;
  std::error_code ec;
  stdfs::create_directory(path_, ec);
  if (ec) fail("create_directory", path_, ec);
  return is_directory();
}

bool Path::create_directories() const {
  refuse_zero_unit("create_directories", path_);
  if (is_directory()) return true;
  std::error_code ec;
  stdfs::create_directories(path_, ec);
  if (ec) fail("create_directories", path_, ec);
  return is_directory();
}

bool Path::remove_all() const {
  refuse_zero_unit("remove_all", path_);
  std::error_code ec;
  const std::uintmax_t removed = stdfs::remove_all(path_, ec);
  if (ec) fail("remove_all", path_, ec);
  return removed > 0;
}

namespace {

// delete_file's checks in order; *operation names the step that failed.
bool delete_file_checked(const stdfs::path& path, std::error_code& ec, const char** operation) {
  if (detail::has_zero_unit(path)) {
    *operation = "remove";
    ec = detail::refused_name();
    return false;
  }
  if (!anything_at(path, ec, operation)) return false;
  // A dangling link has no target status, so it is not a directory.
  *operation = "exists";
  if (stdfs::is_directory(status_of(path, ec)) || ec) return false;
  *operation = "remove";
  return stdfs::remove(path, ec);
}

}  // namespace

bool Path::delete_file(std::error_code& ec) const {
  const char* operation;
  return delete_file_checked(path_, ec, &operation);
}

bool Path::delete_file() const {
  std::error_code ec;
  const char* operation;
  const bool removed = delete_file_checked(path_, ec, &operation);
  if (ec) fail(operation, path_, ec);
  return removed;
}

bool Path::delete_directory() const {
  refuse_zero_unit("remove", path_);
  if (!is_directory()) return false;
  std::error_code ec;
  const bool removed = stdfs::remove(path_, ec);
  if (ec) fail("remove", path_, ec);
  return removed;
}

bool Path::delete_file_or_directory() const {
  refuse_zero_unit("remove", path_);
  std::error_code ec;
  const char* operation;
  const bool there = anything_at(path_, ec, &operation);
  if (ec) fail(operation, path_, ec);
  if (!there) return false;
  stdfs::remove(path_, ec);
  if (ec) fail("remove", path_, ec);
  return true;
}

void Path::rename(const Path& to) const {
  std::error_code ec;
  if (detail::has_zero_unit(path_) || detail::has_zero_unit(to.path_)) {
    ec = detail::refused_name();
  } else {
    stdfs::rename(path_, to.path_, ec);
  }
  if (ec) throw stdfs::filesystem_error("rename", path_, to.path_, ec);
}

bool Path::equivalent(const Path& other) {
  if (detail::has_zero_unit(path_) || detail::has_zero_unit(other.path_))
    throw stdfs::filesystem_error("equivalent", path_, other.path_, detail::refused_name());
  const Path a = absolute(), b = other.absolute();
  if (a == b) return true;
  std::error_code ec;
  const bool same = detail::os_same_file(a.path_, b.path_, ec);
  if (ec) throw stdfs::filesystem_error("equivalent", a.path_, b.path_, ec);
  return same;
}

FILE* Path::fopen(const char* mode) const {
  if (detail::has_zero_unit(path_)) {
    errno = EINVAL;
    return nullptr;
  }
  FILE* file = detail::os_fopen(path_, mode);
  if (file || string().find("..") == std::string::npos) return file;
  try {
    return detail::os_fopen(complete_path().path_, mode);
  } catch (const std::exception&) {
    return nullptr;
  }
}

Path Path::current_path() {
  std::error_code ec;
  stdfs::path cwd = stdfs::current_path(ec);
  if (ec) fail("current_path()", stdfs::path(), ec);
  return from_fs_path(std::move(cwd));
}

}  // namespace qorin
