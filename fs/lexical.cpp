// The public text functions: the lexical core over UTF-8 bytes.
#include "fs/path_lexical.h"

namespace qorin {

using detail::PathView;

PathParts split_path(std::string_view path, PathStyle style) {
  const detail::RootSpan root = detail::split_root(path, style);
  PathParts parts{std::string(path.substr(0, root.name_end)),
                  std::string(path.substr(root.name_end, root.end - root.name_end)),
                  {}};
  detail::for_each_element(path, root.end, style, [&](std::string_view e) { parts.elements.emplace_back(e); });
  return parts;
}

std::string normalize_path(std::string_view path, PathStyle style) { return detail::normalize_text(path, style); }

std::string resolve_path(std::string_view base, std::string_view path, PathStyle style) {
  return detail::resolve_text(base, path, style);
}

std::string make_relative_path(std::string_view path, std::string_view base, PathStyle style, bool* made_relative,
                               int max_up) {
  return detail::make_relative_text(path, base, style, made_relative, max_up);
}

int compare_paths(std::string_view a, std::string_view b, PathStyle style) { return detail::compare_text(a, b, style); }

bool path_starts_with(std::string_view path, std::string_view prefix, PathStyle style) {
  return detail::starts_with_text(path, prefix, style);
}

bool is_path_separator(int c, PathStyle style) { return c >= 0 && detail::is_sep(unsigned(c), style); }

bool ends_with_path_separator(std::string_view text, PathStyle style) {
  return !text.empty() && detail::is_sep(static_cast<unsigned char>(text.back()), style);
}

std::string add_path_separator(const std::string& text, PathStyle style) {
  return ends_with_path_separator(text, style) ? text : text + detail::preferred_sep(style);
}

}  // namespace qorin
