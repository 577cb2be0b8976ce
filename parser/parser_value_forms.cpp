// What a value part may look like: numbers, quoted strings, variable names.
#include "parser/value_forms.h"
#include "text/number_scanner.h"

#include <qorin/parser.h>

namespace qorin::parser {

namespace detail {

// The grammar isValidNumber reads, without copying the view into a string.
// Flattened as isValidNumber is: every split the parse tries asks this.
[[gnu::flatten]] bool is_number(std::string_view text) {
  return qorin::detail::scan_number(text.data(), text.data() + text.size()).valid;
}

namespace {

// Scans `text` for parentheses outside quoted strings; stops early when
// `stop_at_zero` and the depth comes back to zero. Returns the index after
// the byte where it stopped, or npos when a ')' has no partner or a quote is
// not closed.
std::size_t scan_parentheses(std::string_view text, bool stop_at_zero, std::size_t* depth_out) {
  std::size_t depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\'' || c == '"') {
      // A quoted string ends at the next unescaped quote of its kind; a
      // doubled quote reads as two strings, which comes to the same.
      std::size_t j = i + 1;
      while (j < text.size() && text[j] != c) j += text[j] == '\\' ? 2 : 1;
      if (j >= text.size()) return std::string_view::npos;
      i = j;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      if (depth == 0) return std::string_view::npos;
      if (--depth == 0 && stop_at_zero) return i + 1;
    }
  }
  *depth_out = depth;
  return text.size();
}

}  // namespace

bool is_parenthesised(std::string_view text) {
  if (text.size() < 2 || text.front() != '(' || text.back() != ')') return false;
  std::size_t depth = 0;
  return scan_parentheses(text, true, &depth) == text.size() && depth == 0;
}

bool is_balanced(std::string_view text) {
  std::size_t depth = 0;
  return scan_parentheses(text, false, &depth) != std::string_view::npos && depth == 0;
}

bool is_variable_name(std::string_view text) {
  if (text.empty() || !(text[0] == '_' || is_ascii_letter(text[0]))) return false;
  for (char c : text) {
    if (!is_name_byte(c)) return false;
  }
  return true;
}

namespace {

// Every ' strictly inside must follow a backslash.
bool is_single_quoted(std::string_view text) {
  if (text.front() != '\'' || text.back() != '\'') return false;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] == '\'' && text[i - 1] != '\\') return false;
  }
  return true;
}

// Every " strictly inside follows a backslash or is doubled.
bool is_double_quoted(std::string_view text) {
  if (text.front() != '"' || text.back() != '"') return false;
  const std::size_t last = text.size() - 1;
  for (std::size_t i = 1; i < last; ++i) {
    if (text[i] != '"' || text[i - 1] == '\\') continue;
    if (i + 1 < last && text[i + 1] == '"') {
      ++i;
      continue;
    }
    return false;
  }
  return true;
}

}  // namespace

bool is_quoted(std::string_view text) {
  const std::string_view trimmed = trim_blanks(text);
  // A lone quote character both begins and ends the text: it counts.
  return !trimmed.empty() && (is_single_quoted(trimmed) || is_double_quoted(trimmed));
}

}  // namespace detail

bool ParserValue::is_valid_variable_name(const std::string& text) { return detail::is_variable_name(text); }

bool ParserValue::is_quoted_string(std::string text) { return detail::is_quoted(text); }

}  // namespace qorin::parser
