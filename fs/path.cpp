// Path: conversions and the lexical members, through the core in the native
// style.
#include "fs/fs_os.h"
#include "fs/path_lexical.h"

#include <algorithm>

namespace qorin {

namespace {

using Unit = Path::string_type::value_type;
using View = std::basic_string_view<Unit>;
constexpr PathStyle kStyle = detail::os_native_style();

View text_of(const Path& p) { return View(p.fs_path().native()); }

Path from_native(Path::string_type text) { return Path::from_fs_path(std::filesystem::path(std::move(text))); }

detail::RootSpan root_of(View t) { return detail::split_root(t, kStyle); }

// Where the last element after the root starts.
std::size_t last_element_start(View t) {
  const detail::RootSpan root = root_of(t);
  std::size_t i = t.size();
  while (i > root.end && !detail::is_sep(t[i - 1], kStyle)) --i;
  return i;
}

// The last element when it names something: not "", ".", "..", a
// separator, or ending in ":".
View proper_filename(View t) {
  const View e = t.substr(last_element_start(t));
  if (e.empty() || detail::is_dot(e) || detail::is_dot_dot(e) || e.back() == Unit(':')) return View();
  return e;
}

}  // namespace

PathStyle native_path_style() { return kStyle; }

Path::Path(const char* utf8) : Path(std::string_view(utf8)) {}
Path::Path(const std::string& utf8) : Path(std::string_view(utf8)) {}
Path::Path(std::string_view utf8) : path_(detail::os_path_from_utf8(utf8)) {}

Path Path::from_fs_path(const std::filesystem::path& path) { return Path(path, FromFSPath{}); }
Path Path::from_fs_path(std::filesystem::path&& path) { return Path(std::move(path), FromFSPath{}); }

std::string Path::string() const { return detail::os_utf8_from_path(path_); }

std::string Path::generic() const {
  std::string text = string();
  if (kStyle == PathStyle::windows) std::replace(text.begin(), text.end(), '\\', '/');
  return text;
}

std::wstring Path::wstring() const { return detail::os_wide_from_path(path_); }

std::wstring Path::generic_wstring() const {
  std::wstring text = wstring();
  if (kStyle == PathStyle::windows) std::replace(text.begin(), text.end(), L'\\', L'/');
  return text;
}

std::u16string Path::u16string() const { return detail::os_utf16_from_path(path_); }

std::u16string Path::generic_u16string() const {
  std::u16string text = u16string();
  if (kStyle == PathStyle::windows) std::replace(text.begin(), text.end(), u'\\', u'/');
  return text;
}

Path Path::root_name() const {
  const View t = text_of(*this);
  return from_native(Path::string_type(t.substr(0, root_of(t).name_end)));
}

Path Path::root_directory() const {
  const View t = text_of(*this);
  const detail::RootSpan root = root_of(t);
  return from_native(Path::string_type(t.substr(root.name_end, root.end - root.name_end)));
}

Path Path::root_path() const {
  const View t = text_of(*this);
  return from_native(Path::string_type(t.substr(0, root_of(t).end)));
}

Path Path::relative_path() const {
  const View t = text_of(*this);
  return from_native(Path::string_type(t.substr(root_of(t).end)));
}

bool Path::is_absolute() const {
  const detail::RootSpan root = root_of(text_of(*this));
  return root.end > root.name_end && (root.name_end > 0 || kStyle == PathStyle::posix);
}

Path Path::parent_path() const {
  const View t = text_of(*this);
  const detail::RootSpan root = root_of(t);
  std::size_t end = last_element_start(t);
  while (end > root.end && detail::is_sep(t[end - 1], kStyle)) --end;
  return from_native(Path::string_type(t.substr(0, end)));
}

Path Path::filename() const { return from_native(Path::string_type(proper_filename(text_of(*this)))); }

Path Path::stem() const {
  View name = proper_filename(text_of(*this));
  const std::size_t dot = name.rfind(Unit('.'));
  if (dot != View::npos && dot > 0) name = name.substr(0, dot);
  return from_native(Path::string_type(name));
}

Path& Path::append(const Path& other) {
  path_ = detail::append_text(text_of(*this), text_of(other), kStyle);
  return *this;
}

Path& Path::concat(const Path& other) {
  path_ += other.path_;
  return *this;
}

Path& Path::append_path(const Path& other) { return *this = resolve_path(other); }

Path& Path::remove_filename() {
  Path::string_type text = path_.native();
  text.resize(last_element_start(text));
  path_ = std::move(text);
  return *this;
}

Path& Path::replace_extension(const Path& extension) {
  path_.replace_extension(extension.path_);
  return *this;
}

Path& Path::normalize() {
  if (!detail::is_plainly_normal(text_of(*this), kStyle))
    path_ = detail::normalize_text(text_of(*this), kStyle);
  return *this;
}

int Path::compare_filenames(const Path& a, const Path& b) {
  return detail::compare_text(text_of(a), text_of(b), kStyle);
}

bool Path::starts_with(const Path& prefix) const {
  return detail::starts_with_text(text_of(*this), text_of(prefix), kStyle);
}

bool operator==(const Path& a, const Path& b) { return detail::equal_text(text_of(a), text_of(b), kStyle); }
bool operator!=(const Path& a, const Path& b) { return !(a == b); }
bool operator<(const Path& a, const Path& b) { return Path::compare_filenames(a, b) < 0; }
bool operator<=(const Path& a, const Path& b) { return Path::compare_filenames(a, b) <= 0; }
bool operator>(const Path& a, const Path& b) { return Path::compare_filenames(a, b) > 0; }
bool operator>=(const Path& a, const Path& b) { return Path::compare_filenames(a, b) >= 0; }

bool Path::is_separator(int c) { return is_path_separator(c, kStyle); }
bool Path::ends_with_separator(std::string_view text) { return ends_with_path_separator(text, kStyle); }
bool Path::ends_with_separator() const {
  const View t = text_of(*this);
  return !t.empty() && detail::is_sep(t.back(), kStyle);
}
std::string Path::add_separator(const std::string& text) { return add_path_separator(text, kStyle); }

Path Path::resolve_path(const Path& path) const {
  return from_native(detail::resolve_text(text_of(*this), text_of(path), kStyle));
}

Path Path::absolute() const {
  if (is_absolute()) return *this;
  std::error_code ec;
  std::filesystem::path result = detail::os_absolute(path_, ec);
  if (ec) throw std::filesystem::filesystem_error("absolute", path_, ec);
  return from_fs_path(std::move(result));
}

Path Path::complete_path() const { return absolute().normalize(); }

bool Path::is_contained_within_path(const Path& other) const { return absolute().starts_with(other.absolute()); }

bool Path::is_contained_within_path_physical(const Path& other) const {
  return complete_path().starts_with(other.complete_path());
}

Path Path::make_relative_path(const Path& path, const Path& base, bool* made_relative, int max_up) {
  return from_native(
      detail::make_relative_text(text_of(path), text_of(base), kStyle, made_relative, max_up));
}

// No automount table exists on these platforms: every path is valid as it is.
Path Path::get_valid_automount_path() const { return *this; }

}  // namespace qorin
