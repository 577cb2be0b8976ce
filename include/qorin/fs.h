// Files and paths: lexical path algebra in two styles, the `Path` value,
// file-system operations, directory iteration, UTF-8 faces of the C runtime's
// file functions, and scratch files and directories.
//
// All text is UTF-8. On Windows invalid UTF-8 in a path throws
// utf8::invalid_utf8 (see <qorin/text.h>), never a mangled name. On POSIX a
// name is bytes: a name that is not UTF-8 (made by another program) reads
// as its own bytes from string() and the iterators, and Path takes those
// bytes back as the same file; only the UTF-16 forms (u16string(),
// wstring()) throw for it.
//   for (DirectoryIterator it(dir), end; it != end; ++it)
//     Path(it->path().string()).delete_file();   // also for "caf\xE9.txt" in Latin-1
//
// A name with a zero byte (unit) in it is refused by everything that would
// hand it to the system, never cut short at the zero: throwing members throw
// std::filesystem::filesystem_error with their operation's name and
// errc::invalid_argument, error-code forms answer false with that code, the
// C-style functions answer -1 or null with errno EINVAL. exists() and the
// status queries answer false for it: such a file cannot be there.
//   Path(std::string("ab\0cd", 5)).create_directory()  => throws, «ab» is not made
//   qorin::unlink_utf8(std::string("ab\0cd", 5))        => -1, errno EINVAL, «ab» stays
//
// Example:
//   qorin::Path p("C:/Data/run.log");          // Windows: stored as C:\Data\run.log
//   p == qorin::Path("c:\\DATA\\RUN.LOG")      => true on Windows
//   qorin::normalize_path("a/./b/../c/", qorin::PathStyle::posix) => "a/c"
#pragma once

#include <qorin/export.h>

#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace qorin {

// ---------------------------------------------------------------------------
// Lexical path algebra over text. Nothing here touches the disk, and both
// styles work on every platform, so a Linux program can normalise a path that
// was written on Windows.
//
// windows: "\\" and "/" both separate; roots are a drive ("C:"), a UNC name
//   ("\\server") and the separators after them; letters compare as Windows
//   upper-cases them, one UTF-16 unit at a time; joins write "\\".
// posix: only "/" separates ("\\" is an ordinary character); the root is the
//   leading run of "/"; comparison is byte for byte; joins write "/".
enum class PathStyle { windows, posix };

// The style `Path` uses: windows on Windows, posix elsewhere.
QORIN_EXPORT PathStyle native_path_style();

// The root name ("C:", "\\server" or empty), the root directory (the
// separators after the root name, as written) and the elements after them,
// consecutive separators collapsed; a trailing separator gives one last
// empty element.
//
// Example (windows): split_path("C:/a\\\\b\\") => {"C:", "/", {"a", "b", ""}}
struct PathParts {
  std::string root_name;
  std::string root_directory;
  std::vector<std::string> elements;
};
QORIN_EXPORT PathParts split_path(std::string_view path, PathStyle style);

// "." elements are dropped and each ".." cancels the element before it;
// ".." that cancel nothing stay at the front, even after a root; the root is
// kept as written and every later separator becomes the style's own. A path
// that needs none of this is returned unchanged.
//
// In the windows style a first element that would read as a drive keeps
// ".\\" before it, so that the result means what the input meant.
//
// Example (windows): "a/b" => "a\\b"; "a\\.\\b\\" => "a\\b"; "." => "";
//                    "..\\a\\..\\.." => "..\\.."; "C:\\..\\x" => "C:\\..\\x";
//                    "a\\..\\b:x" => ".\\b:x"
QORIN_EXPORT std::string normalize_path(std::string_view path, PathStyle style);

// `path` taken relative to `base`, normalized: a relative path is appended
// to base; a path with a root directory only keeps base's root name; a
// drive-relative path ("C:x") on base's drive is appended to base; anything
// else stands as it is.
//
// Example (windows, base "C:\\w"): "x\\..\\y" => "C:\\w\\y"; "\\t" => "C:\\t";
//                                  "C:t" => "C:\\w\\t"; "D:t" => "D:t"
QORIN_EXPORT std::string resolve_path(std::string_view base, std::string_view path, PathStyle style);

// `path` relative to `base`, both normalized first, using at most `max_up`
// ".." elements (0 allows descendants only; a negative value refuses
// everything, descendants included).
// *made_relative (when not null) tells whether that worked; when it did not,
// the answer is `path` normalized. Windows: both need the same root name
// and a root directory, and the same volume: the share of "\\\\srv\\share"
// and the drive of "\\\\?\\C:" count as part of the root, since no ".."
// leads from one share or drive to another. Posix: both need to start with
// "/". Refused too: a base that still starts with ".." once normalized
// ("C:\\..\\a": its place has no name to climb back by), and a path or base
// with a zero unit in it.
//
// Example (windows): ("C:\\a\\b\\c", "C:\\a\\x", max_up 1) => "..\\b\\c", true
//                    (same, max_up 0) => "C:\\a\\b\\c", false
//                    ("C:\\a\\b", "C:\\a\\x\\..\\y", max_up 1) => "..\\b", true
//                    ("\\\\srv\\s1\\a", "\\\\srv\\s2\\b", max_up 9) => "\\\\srv\\s1\\a", false
QORIN_EXPORT std::string make_relative_path(std::string_view path, std::string_view base, PathStyle style,
                                            bool* made_relative, int max_up);

// -1, 0 or 1, unit by unit after upper-casing (windows) or byte by byte
// (posix); text after a zero unit is ignored. Purely textual: "a\\b" and
// "a\\.\\b" differ, so do "a\\" and "a".
QORIN_EXPORT int compare_paths(std::string_view a, std::string_view b, PathStyle style);

// Whether the first units of `path` are `prefix` under the same rule. A
// character prefix, not an element prefix, and deliberately so:
// "C:\\data2\\f" starts with "C:\\data".
QORIN_EXPORT bool path_starts_with(std::string_view path, std::string_view prefix, PathStyle style);

// "/" always, "\\" too in the windows style.
QORIN_EXPORT bool is_path_separator(int c, PathStyle style);
QORIN_EXPORT bool ends_with_path_separator(std::string_view text, PathStyle style);

// `text` unchanged when it ends with a separator, else with the style's own
// separator appended. Example (windows): "" => "\\"; "a/" => "a/"
QORIN_EXPORT std::string add_path_separator(const std::string& text, PathStyle style);

// ---------------------------------------------------------------------------
// The library's path value: a standard filesystem path in the platform's
// native form, with the native style's lexical rules above.
//
// Windows: built from UTF-8 with every "/" turned into "\\", held as UTF-16;
// comparisons ignore letter case, upper-casing one UTF-16 unit at a time as
// CharUpperW does (through a built-in table that the tests hold against it),
// without copying the texts.
// POSIX: the bytes are kept ("/" stays "/", a backslash is an ordinary
// character), comparisons are exact, generic() equals string(), and
// is_absolute() needs only a leading "/".
//
// filename() and stem() are empty unless the last element is a proper name
// (not "", ".", "..", a separator, or ending in ":"): "a\\.", "a\\.." and "C:"
// have none, unlike the standard grammar. parent_path() drops the last
// element and the separators before it: "C:\\a\\b" => "C:\\a", "C:\\" => "C:\\".
//
// Not safe for concurrent modification; concurrent reading is.
class QORIN_EXPORT Path {
 public:
  using string_type = std::filesystem::path::string_type;

  Path() = default;
  Path(const char* utf8);
  Path(const std::string& utf8);
  Path(std::string_view utf8);

  static Path from_fs_path(const std::filesystem::path& path);
  static Path from_fs_path(std::filesystem::path&& path);

  const std::filesystem::path& fs_path() const { return path_; }
  operator const std::filesystem::path&() const { return path_; }

  // UTF-8 with the native separators.
  std::string string() const;
  std::string native() const { return string(); }
  std::string u8string() const { return string(); }
  operator std::string() const { return string(); }
  // string() with every "\\" as "/" (Windows).
  std::string generic() const;
  std::string generic_string() const { return generic(); }
  std::string generic_u8string() const { return generic(); }
  std::wstring wstring() const;
  std::wstring generic_wstring() const;
  std::u16string u16string() const;
  std::u16string generic_u16string() const;

  Path& assign(const Path& other) { return *this = other; }
  void clear() { path_.clear(); }
  void swap(Path& other) noexcept { path_.swap(other.path_); }
  bool empty() const { return path_.empty(); }

  // The root as split_path reads it in the native style, on every
  // platform the same: Windows root names are a drive "C:", a server
  // "\\server", and the device and verbatim prefixes "\\.", "\\?"; the
  // root directory is the separators after the root name, as written.
  // Absolute means a root name and a root directory (Windows) or a leading
  // "/" (POSIX); an absolute path completes to itself.
  //
  // Example (Windows): "\\srv\share\f" => root_name "\\srv", root_directory
  //                    "\\", relative_path "share\f", is_absolute() true;
  //                    "\\.\pipe\p" => root_name "\\."; "C:x" => "C:", "", "x"
  Path root_name() const;
  Path root_directory() const;
  Path root_path() const;
  Path relative_path() const;
  Path parent_path() const;
  Path filename() const;
  Path stem() const;
  Path extension() const { return from_fs_path(path_.extension()); }
  bool has_root_name() const { return !root_name().empty(); }
  bool has_root_directory() const { return !root_directory().empty(); }
  bool has_root_path() const { return !root_path().empty(); }
  bool has_relative_path() const { return !relative_path().empty(); }
  bool has_parent_path() const { return !parent_path().empty(); }
  bool has_filename() const { return !filename().empty(); }
  bool has_stem() const { return !stem().empty(); }
  bool has_extension() const { return path_.has_extension(); }
  bool is_absolute() const;
  bool is_relative() const { return !is_absolute(); }

  // The standard append on the grammar above: a right side with a root
  // name and root directory (or another root name) replaces, a root
  // directory alone keeps this root name, anything else joins with "\\".
  // Example (Windows): "C:\\x" / "\\\\srv\\s" => "\\\\srv\\s"; "C:\\x" / "\\y" => "C:\\y"
  Path& operator/=(const Path& other) { return append(other); }
  Path& append(const Path& other);
  Path& operator+=(const Path& other) { return concat(other); }
  Path& concat(const Path& other);
  // *this = resolve_path(other), so the result is normalized.
  Path& append_path(const Path& other);
  // "a\\b" => "a\\"; "C:\\" and "a\\" stay.
  Path& remove_filename();
  Path& replace_extension(const Path& extension = Path());
  Path& remove_extension() { return replace_extension(); }
  // normalize_path in the native style.
  Path& normalize();

  bool equal_filenames(const Path& other) const { return compare_filenames(*this, other) == 0; }
  static bool equal_filenames(const Path& a, const Path& b) { return compare_filenames(a, b) == 0; }
  static int compare_filenames(const Path& a, const Path& b);
  bool starts_with(const Path& prefix) const;

  static bool is_separator(int c);
  static bool ends_with_separator(std::string_view text);
  bool ends_with_separator() const;
  static std::string add_separator(const std::string& text);

  // This path is the base; see resolve_path above.
  Path resolve_path(const Path& path) const;
  // Completed against the current directory (on Windows a drive-relative
  // path uses that drive's own current directory), not normalized. Throws
  // the filesystem error for "absolute".
  Path absolute() const;
  // absolute() then normalize(); links are not resolved.
  Path complete_path() const;
  Path physical_path() const { return complete_path(); }
  // Character prefixes, as starts_with.
  bool is_contained_within_path(const Path& other) const;
  bool is_contained_within_path_physical(const Path& other) const;
  // make_relative_path above, in the native style.
  static Path make_relative_path(const Path& path, const Path& base, bool* made_relative, int max_up);
  Path get_valid_automount_path() const;

  // --- The disk. Forms without std::error_code& throw
  // std::filesystem::filesystem_error naming the operation and the path;
  // forms with it clear it and answer, or set it and answer false.
  // "Not found" and invalid names mean absent, not an error.
  bool exists() const;
  bool exists(std::error_code& ec) const;
  bool is_directory() const;  // errors: "status"
  bool is_directory(std::error_code& ec) const;
  bool is_regular_file() const;  // errors: "status"
  bool is_readable() const;      // never throws
  bool is_writable() const;      // never throws
  std::uint64_t file_size() const;
  // True when the directory exists afterwards, an existing one included
  // (unlike the standard call). Errors: "status", "create_directory".
  bool create_directory() const;
  bool create_directories() const;
  // True when anything was removed. Errors: "remove_all".
  bool remove_all() const;
  bool removeAllFilesDirectoriesRecursively() const { return remove_all(); }
  // False for nothing there or a directory; a dangling symbolic link is
  // removed. Errors: "exists", "symlink_status", "remove".
  bool delete_file() const;
  bool delete_file(std::error_code& ec) const;
  // False when not a directory; removes an empty directory only.
  bool delete_directory() const;
  bool delete_file_or_directory() const;
  void rename(const Path& to) const;  // errors: "rename", with both paths
  // Same text (case-insensitively on Windows) once absolute, or the same
  // file on disk. Errors: "equivalent".
  bool equivalent(const Path& other);
  // The C stream or null; when it fails and the path holds "..", tried once
  // more as complete_path(). No child process inherits the stream (the mode
  // gets 'N' on Windows, 'e' on POSIX).
  FILE* fopen(const char* mode) const;
  static Path current_path();  // errors: "current_path()"

 private:
  struct FromFSPath {};
  Path(std::filesystem::path path, FromFSPath) : path_(std::move(path)) {}
  std::filesystem::path path_;
};

QORIN_EXPORT bool operator==(const Path& a, const Path& b);
QORIN_EXPORT bool operator!=(const Path& a, const Path& b);
QORIN_EXPORT bool operator<(const Path& a, const Path& b);
QORIN_EXPORT bool operator<=(const Path& a, const Path& b);
QORIN_EXPORT bool operator>(const Path& a, const Path& b);
QORIN_EXPORT bool operator>=(const Path& a, const Path& b);

// ---------------------------------------------------------------------------
// Directory iteration without standard paths in the caller's hands. Errors
// name the standard operations ("directory_iterator::operator++", ...).
//
// Example:
//   for (DirectoryIterator it(dir), end; it != end; ++it) use(it->path());
class QORIN_EXPORT DirectoryEntry {
 public:
  DirectoryEntry() = default;
  explicit DirectoryEntry(const Path& path);
  DirectoryEntry(const Path& path, std::error_code& ec);
  explicit DirectoryEntry(const std::filesystem::directory_entry& entry) : entry_(entry) {}

  void assign(const Path& path);
  void assign(const Path& path, std::error_code& ec);
  void replace_filename(const Path& name);
  void replace_filename(const Path& name, std::error_code& ec);

  const std::filesystem::directory_entry& as_std_directory_entry() const { return entry_; }
  std::filesystem::directory_entry& as_std_directory_entry() { return entry_; }
  Path path() const { return Path::from_fs_path(entry_.path()); }
  operator Path() const { return path(); }
  bool operator==(const DirectoryEntry& other) const { return entry_.path() == other.entry_.path(); }
  bool operator!=(const DirectoryEntry& other) const { return !(*this == other); }

 private:
  std::filesystem::directory_entry entry_;
};

// The default iterator is the end. Dereferencing refreshes the entry's
// attributes from the disk.
class QORIN_EXPORT DirectoryIterator {
 public:
  DirectoryIterator() = default;
  explicit DirectoryIterator(const Path& dir);
  DirectoryIterator(const Path& dir, std::filesystem::directory_options options);
  DirectoryIterator(const Path& dir, std::error_code& ec);
  DirectoryIterator(const Path& dir, std::filesystem::directory_options options, std::error_code& ec);

  const DirectoryEntry& operator*();
  const DirectoryEntry* operator->() { return &**this; }
  DirectoryIterator& operator++();
  DirectoryIterator& increment(std::error_code& ec);
  bool operator==(const DirectoryIterator& other) const { return it_ == other.it_; }
  bool operator!=(const DirectoryIterator& other) const { return !(*this == other); }

 private:
  std::filesystem::directory_iterator it_;
  DirectoryEntry entry_;
};

class QORIN_EXPORT RecursiveDirectoryIterator {
 public:
  RecursiveDirectoryIterator() = default;
  explicit RecursiveDirectoryIterator(const Path& dir);
  RecursiveDirectoryIterator(const Path& dir, std::filesystem::directory_options options);
  RecursiveDirectoryIterator(const Path& dir, std::error_code& ec);
  RecursiveDirectoryIterator(const Path& dir, std::filesystem::directory_options options, std::error_code& ec);

  const DirectoryEntry& operator*();
  const DirectoryEntry* operator->() { return &**this; }
  RecursiveDirectoryIterator& operator++();
  RecursiveDirectoryIterator& increment(std::error_code& ec);
  bool operator==(const RecursiveDirectoryIterator& other) const { return it_ == other.it_; }
  bool operator!=(const RecursiveDirectoryIterator& other) const { return !(*this == other); }

  std::filesystem::directory_options options() const { return it_.options(); }
  int depth() const { return it_.depth(); }  // 0 in the starting directory
  bool recursion_pending() const { return it_.recursion_pending(); }
  void disable_recursion_pending() { it_.disable_recursion_pending(); }
  void pop();
  void pop(std::error_code& ec);

 private:
  std::filesystem::recursive_directory_iterator it_;
  DirectoryEntry entry_;
};

// ---------------------------------------------------------------------------
// UTF-8 faces of the C runtime's file calls: same results, same errno, so
// call sites need no change. On Windows the text becomes a Path ("/" turned
// into "\\") and the wide call is made; on POSIX it is the plain call.
//
// Built on Path members, never throwing: 0 when the member answers true,
// -1 when it answers false or throws.
QORIN_EXPORT int mkdir_utf8(const std::string& path);   // an existing directory counts as done
QORIN_EXPORT int mkpath_utf8(const std::string& path);  // parents too
QORIN_EXPORT int rmdir_utf8(const std::string& path);   // empty directories only
QORIN_EXPORT int unlink_utf8(const std::string& path);
QORIN_EXPORT int remove_utf8(const std::string& path);  // as unlink_utf8: never a directory
QORIN_EXPORT int rename_utf8(const std::string& from, const std::string& to);
// The size, or 0 when it cannot be read (an empty file looks the same).
QORIN_EXPORT unsigned long long filesize_utf8(const std::string& path);

// Straight through to the runtime: -1 or null with errno on failure.
#ifdef _WIN32
using FileStatus = struct _stat64;
#else
using FileStatus = struct stat;
#endif
QORIN_EXPORT int access_utf8(const std::string& path, int mode);
QORIN_EXPORT int stat_utf8(const std::string& path, FileStatus* status);
QORIN_EXPORT int chmod_utf8(const std::string& path, int mode);
QORIN_EXPORT int chdir_utf8(const Path& path);
// A descriptor or -1. No child process inherits it: O_CLOEXEC (POSIX) or
// _O_NOINHERIT (Windows) is added to the flags, which otherwise pass
// unchanged (Windows: text mode unless they ask for binary). Windows opens
// with full sharing, so that another process can read a log that is being
// written.
QORIN_EXPORT int open_utf8(const std::string& path, int flags, int mode);
QORIN_EXPORT FILE* freopen_utf8(const std::string& path, const std::string& mode, FILE* stream);
// A new name the caller releases with free(), or null: `prefix` and random
// characters, in a folder that exists; the file itself does not exist.
// POSIX: the folder is `dir`, else $TMPDIR, else /tmp (an empty text counts
// as none); a missing folder gives null with errno ENOENT, never a name
// elsewhere. Windows: the runtime's _wtempnam, which prefers the TMP
// variable's folder to `dir` when it exists.
// Example (POSIX): tempnam_utf8("/w", "run") => "/w/runA1b2C3"
QORIN_EXPORT char* tempnam_utf8(const char* dir, const char* prefix);

// The current directory; throws the filesystem error for "current_path()".
QORIN_EXPORT std::string getcwd_utf8();
// Into `buffer` of `size` bytes; a null buffer gets one from malloc (at least
// `size` bytes, freed by the caller). Null with errno ERANGE when the text does
// not fit, EINVAL for a size of 0 with a buffer. The query's failure throws as
// getcwd_utf8.
QORIN_EXPORT char* getcwd_utf8_legacy(char* buffer, int size);

// Every "/" replaced by "\\", nothing else. Example: "a/b\\c/" => "a\\b\\c\\"
QORIN_EXPORT std::string fixFilenameSlashes(const std::string& path);
// Normalized in the native style, trailing separators removed unless the
// path is a root. Example (Windows): "C:/" => "C:\\"; "C:/a/b/" => "C:\\a\\b"
QORIN_EXPORT std::string simplify_path(const std::string& path);
// simplify_path of the path made absolute against the current directory.
QORIN_EXPORT std::string canonical_path(const std::string& path);
// The parent of canonical_path. Example: "/w/a/f.txt" => "/w/a"
QORIN_EXPORT std::string get_directory_from_file(const std::string& path);

// ---------------------------------------------------------------------------
// Scratch space. The root is QORIN_TEMP_PATH when set (the environment, then
// the registry), else the system temporary directory. Names carry random
// bits from the OS and are created exclusively: two processes or threads
// never share one and nothing that already exists is opened or followed.
// POSIX: directories get mode 0700, files 0600. The destructor removes what
// was made (a directory with its contents) unless keep() was called; it
// never throws. Movable, not copyable.
//
// A prefix or suffix is part of one name: one holding "/", "\\", ":", ".."
// or a zero byte throws std::invalid_argument naming it, so the object is
// always made directly in its folder. A relative folder is made absolute
// when the object is made: path() is absolute, and a later change of the
// current directory changes nothing about what the destructor removes.
//
// Example:
//   TemporaryDirectory scratch("solve");   // e.g. /tmp/solve-3f9c0a17d2b4e681
//   TemporaryFile netlist(scratch.path(), "net", ".cir");
QORIN_EXPORT Path temporary_root();

// What both scratch objects are: a path they made, removed with them.
class QORIN_EXPORT ScratchPath {
 public:
  ~ScratchPath();
  ScratchPath(ScratchPath&& other) noexcept;
  ScratchPath& operator=(ScratchPath&& other) noexcept;
  ScratchPath(const ScratchPath&) = delete;
  ScratchPath& operator=(const ScratchPath&) = delete;

  const Path& path() const { return path_; }
  void keep() { keep_ = true; }

 protected:
  // `directory`: removed with its contents; otherwise as a single file.
  ScratchPath(Path path, bool directory);

 private:
  void release() noexcept;
  Path path_;
  bool keep_ = false;
  bool directory_ = false;
};

class QORIN_EXPORT TemporaryDirectory : public ScratchPath {
 public:
  // Under temporary_root(), named `prefix` "-" random hex.
  explicit TemporaryDirectory(const std::string& prefix = "qorin");
  TemporaryDirectory(const Path& parent, const std::string& prefix);
};

class QORIN_EXPORT TemporaryFile : public ScratchPath {
 public:
  // Created empty and closed, named `prefix` "-" random hex `suffix`.
  explicit TemporaryFile(const std::string& prefix = "qorin", const std::string& suffix = "");
  TemporaryFile(const Path& dir, const std::string& prefix, const std::string& suffix);
};

// Brings the current directory back on destruction; a failure to do so goes
// to the reporters (reportError) instead of being thrown.
//
// Example:
//   { DirectorySaver saved; chdir_utf8(project); run(); }  // back where we were
class QORIN_EXPORT DirectorySaver {
 public:
  DirectorySaver();  // throws as Path::current_path()
  ~DirectorySaver();
  DirectorySaver(const DirectorySaver&) = delete;
  DirectorySaver& operator=(const DirectorySaver&) = delete;
  const Path& saved() const { return saved_; }

 private:
  Path saved_;
};

}  // namespace qorin
