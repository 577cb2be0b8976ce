// The wrappers hand out DirectoryEntry, refreshed from the disk on each
// dereference; errors keep the standard operation names.
#include <qorin/fs.h>

namespace qorin {

namespace stdfs = std::filesystem;

DirectoryEntry::DirectoryEntry(const Path& path) : entry_(path.fs_path()) {}
DirectoryEntry::DirectoryEntry(const Path& path, std::error_code& ec) : entry_(path.fs_path(), ec) {}
void DirectoryEntry::assign(const Path& path) { entry_.assign(path.fs_path()); }
void DirectoryEntry::assign(const Path& path, std::error_code& ec) { entry_.assign(path.fs_path(), ec); }
void DirectoryEntry::replace_filename(const Path& name) { entry_.replace_filename(name.fs_path()); }
void DirectoryEntry::replace_filename(const Path& name, std::error_code& ec) {
  entry_.replace_filename(name.fs_path(), ec);
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

// Runs the error-code form and throws with the operation's standard name,
// which the library's errors carry on every platform.
template <class Call>
void or_throw(const char* operation, const stdfs::path& path, Call call) {
  std::error_code ec;
  call(ec);
  if (ec) throw stdfs::filesystem_error(operation, path, ec);
}

template <class Iterator>
stdfs::path current(const Iterator& it) {
  return it == Iterator() ? stdfs::path() : it->path();
}

}  // namespace

DirectoryIterator::DirectoryIterator(const Path& dir) : DirectoryIterator(dir, stdfs::directory_options::none) {}
DirectoryIterator::DirectoryIterator(const Path& dir, stdfs::directory_options options) {
  or_throw("directory_iterator::directory_iterator", dir.fs_path(),
           [&](std::error_code& ec) { it_ = stdfs::directory_iterator(dir.fs_path(), options, ec); });
}
DirectoryIterator::DirectoryIterator(const Path& dir, std::error_code& ec) : it_(dir.fs_path(), ec) {}
DirectoryIterator::DirectoryIterator(const Path& dir, stdfs::directory_options options, std::error_code& ec)
    : it_(dir.fs_path(), options, ec) {}
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
           [&](std::error_code& ec) { it_ = stdfs::recursive_directory_iterator(dir.fs_path(), options, ec); });
}
RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir, std::error_code& ec) : it_(dir.fs_path(), ec) {}
RecursiveDirectoryIterator::RecursiveDirectoryIterator(const Path& dir, stdfs::directory_options options,
                                                       std::error_code& ec)
    : it_(dir.fs_path(), options, ec) {}
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
