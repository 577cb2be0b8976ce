// The lexical path core in both styles. The first byte picks the style and
// max_up; the rest is split at the first zero byte into path and base.
// Oracles: normalize is idempotent and leaves no "." element; a relative
// form that was made resolves back to the normalized path (same root and
// elements under the style's comparison; root separators may be written
// differently); on text without backslashes, colons or a leading "//" the two
// styles normalize and resolve alike; invalid UTF-8 throws only
// utf8::exception; starts_with accepts the text's own leading characters
// and comparison is antisymmetric.
#include <qorin/fs.h>

#include <utf8.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using qorin::PathStyle;

bool has_dot_element(const std::string& path, PathStyle style) {
  const qorin::PathParts parts = qorin::split_path(path, style);
  for (std::size_t i = 0; i < parts.elements.size(); ++i) {
    // ".\\b:x" keeps its "." so that "b:" does not read as a drive.
    const bool drive_guard = i == 0 && parts.elements.size() > 1 && parts.elements[1].size() > 1 &&
                             parts.elements[1][1] == ':' && style == PathStyle::windows;
    if (parts.elements[i] == "." && !drive_guard) return true;
  }
  return false;
}

bool windows_specific(const std::string& text) {
  return text.find_first_of("\\:") != std::string::npos || text.rfind("//", 0) == 0;
}

bool same_place(const std::string& a, const std::string& b, PathStyle style) {
  const qorin::PathParts pa = qorin::split_path(a, style), pb = qorin::split_path(b, style);
  if (qorin::compare_paths(pa.root_name, pb.root_name, style) != 0) return false;
  if (pa.root_directory.empty() != pb.root_directory.empty() || pa.elements.size() != pb.elements.size()) return false;
  for (std::size_t i = 0; i < pa.elements.size(); ++i)
    if (qorin::compare_paths(pa.elements[i], pb.elements[i], style) != 0) return false;
  return true;
}

// The windows form with its separators written as "/".
std::string as_posix(std::string text) {
  for (char& c : text)
    if (c == '\\') c = '/';
  return text;
}

void check(const std::string& path, const std::string& base, PathStyle style, int max_up) {
  const std::string normal = qorin::normalize_path(path, style);
  if (qorin::normalize_path(normal, style) != normal) std::abort();
  if (has_dot_element(normal, style)) std::abort();
  // A text starts with each of its own leading characters; order is antisymmetric.
  std::size_t cut = path.size() / 2;
  while (cut > 0 && (static_cast<unsigned char>(path[cut]) & 0xC0) == 0x80) --cut;
  if (!qorin::path_starts_with(path, path.substr(0, cut), style)) std::abort();
  if (qorin::compare_paths(path, base, style) != -qorin::compare_paths(base, path, style)) std::abort();
  bool made = false;
  const std::string relative = qorin::make_relative_path(path, base, style, &made, max_up);
  if (made && !same_place(qorin::resolve_path(base, relative, style), normal, style)) std::abort();
  if (!made && relative != normal) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const PathStyle style = (data[0] & 1) ? PathStyle::windows : PathStyle::posix;
  const int max_up = static_cast<int>(data[0] >> 1) - 8;
  const std::string rest(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::size_t zero = rest.find('\0');
  const std::string path = rest.substr(0, zero);
  const std::string base = zero == std::string::npos ? std::string() : rest.substr(zero + 1);
  try {
    check(path, base, style, max_up);
    if (!windows_specific(path) && !windows_specific(base)) {
      if (as_posix(qorin::normalize_path(path, PathStyle::windows)) != qorin::normalize_path(path, PathStyle::posix))
        std::abort();
      if (as_posix(qorin::resolve_path(base, path, PathStyle::windows)) !=
          qorin::resolve_path(base, path, PathStyle::posix))
        std::abort();
    }
  } catch (const utf8::exception&) {
    if (utf8::is_valid(path.begin(), path.end()) && utf8::is_valid(base.begin(), base.end())) std::abort();
  }
  return 0;
}
