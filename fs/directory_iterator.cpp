// The wrappers hand out DirectoryEntry, refreshed from the disk on each
// dereference; errors keep the standard operation names.
#include "fs/fs_os.h"

namespace qorin {

namespace stdfs = std::filesystem;

namespace {

// Runs the error-code form and throws with the operation's standard name,
// which the library's errors carry on every platform.
template <class Call>
void or_throw(const char* operation, const stdfs::path& path, Call call) {
  std::error_code ec;
  call(ec);
  if (ec) throw stdfs::filesystem_error(operation, path, ec);
}

// False, with ec set, for a name the system would cut at its zero.
bool acceptable(const stdfs::path& path, std::error_code& ec) {
  if (!detail::has_zero_unit(path)) return true;
  ec = detail::refused_name();
  return false;
}

}  // namespace

DirectoryEntry::DirectoryEntry(const Path& path) { assign(path); }
DirectoryEntry::DirectoryEntry(const Path& path, std::error_code& ec) { assign(path, ec); }
void DirectoryEntry::assign(const Path& path) {
  or_throw("directory_entry::assign", path.fs_path(), [&](std::error_code& ec) { assign(path, ec); });
}
void DirectoryEntry::assign(const Path& path, std::error_code& ec) {
  if (acceptable(path.fs_path(), ec)) entry_.assign(path.fs_path(), ec);
}
void DirectoryEntry::replace_filename(const Path& name) {
  or_throw("directory_entry::replace_filename", name.fs_path(),
           [&](std::error_code& ec) { replace_filename(name, ec); });
}
void DirectoryEntry::replace_filename(const Path& name, std::error_code& ec) {
  if (acceptable(name.fs_path(), ec)) entry_.replace_filename(name.fs_path(), ec);
}

namespace {

// Refreshing an entry that vanished meanwhile keeps its path; the caller
// learns of the loss from the next operation on it.
template <class Iterator>
const DirectoryEntry& refresh(const Iterator& it, DirectoryEntry& entry) {
  std::error_code ignored;
  entry.as_std_directory_entry().assign(it->path(), ignored);
  return entry;
}

template <class Iterator>
stdfs::path current(const Iterator& it) {
  return it == Iterator() ? stdfs::path() : it->path();
}

}  // namespace

DirectoryIterator::DirectoryIterator(const Path& dir) : DirectoryIterator(dir, stdfs::directory_options::none) {}
DirectoryIterator::DirectoryIterator(const Path& dir, stdfs::directory_options options) {
  or_throw("directory_iterator::directory_iterator", dir.fs_path(),
           [&](std::error_code& ec) { *this = DirectoryIterator(dir, options, ec); });
}
DirectoryIterator::DirectoryIterator(const Path& dir, std::error_code& ec)
    : DirectoryIterator(dir, stdfs::directory_options::none, ec) {}
DirectoryIterator::DirectoryIterator(const Path& dir, stdfs::directory_options options, std::error_code& ec) {
  if (acceptable(dir.fs_path(), ec)) it_ = stdfs::directory_iterator(dir.fs_path(), options, ec);
}
const DirectoryEntry& DirectoryIterator::operator*() { return refresh(it_, entry_); }
DirectoryIterator& DirectoryIterator::operator++() {
  or_throw("directory_iterator::operator++", current(it_), [&](std::error_code& ec) { it_.increment(ec); });
  return *this;
}
DirectoryIterator& DirectoryIterator::increment(std::error_code& ec) {
  it_.increment(ec);
  return *this;
}

RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir)
    : RecursiveDirectoryIterator(dir, stdfs::directory_options::none) {}
RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir, stdfs::directory_options options) {
  or_throw("recursive_directory_iterator::recursive_directory_iterator", dir.fs_path(),
           [&](std::error_code& ec) { *this = RecursiveDirectoryIterator(dir, options, ec); });
}
RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir, std::error_code& ec)
    : RecursiveDirectoryIterator(dir, stdfs::directory_options::none, ec) {}
RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir, stdfs::directory_options options,
                                                       std::error_code& ec) {
  if (acceptable(dir.fs_path(), ec)) it_ = stdfs::recursive_directory_iterator(dir.fs_path(), options, ec);
}
const DirectoryEntry& RecursiveDirectoryIterator::operator*() { return refresh(it_, entry_); }
RecursiveDirectoryIterator& RecursiveDirectoryIterator::operator++() {
  or_throw("recursive_directory_iterator::operator++", current(it_), [&](std::error_code& ec) { it_.increment(ec); });
  return *this;
}
RecursiveDirectoryIterator& RecursiveDirectoryIterator::increment(std::error_code& ec) {
  it_.increment(ec);
  return *this;
}
void RecursiveDirectoryIterator::pop() {
  or_throw("recursive_directory_iterator::pop", current(it_), [&](std::error_code& ec) { it_.pop(ec); });
}
void RecursiveDirectoryIterator::pop(std::error_code& ec) { it_.pop(ec); }

}  // namespace qorin
