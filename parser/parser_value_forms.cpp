// What a value part may look like: quoted strings, variable names, file
// references.
#include "parser/value_forms.h"

#include <qorin/parser.h>
#include <qorin/text.h>

namespace qorin::parser {

namespace detail {

std::string_view trim_blanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool begins_with(std::string_view text, std::string_view head) {
  return text.size() >= head.size() && text.compare(0, head.size(), head) == 0;
}

bool ends_with(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

namespace {
bool is_ascii_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
}  // namespace

bool is_name_byte(char c) { return c == '_' || is_ascii_letter(c) || (c >= '0' && c <= '9'); }

bool is_file_reference(std::string_view text) { return begins_with(text, "file{") && ends_with(text, "}"); }

bool is_parenthesised(std::string_view text) {
  return text.size() >= 2 && text.front() == '(' && text.back() == ')';
}

std::string inside_parentheses(std::string_view text) {
  return std::string(trim_blanks(text.substr(1, text.size() - 2)));
}

bool is_word_value(const std::string& text) {
  return ParserValue::is_quoted_string(text) || ParserValue::is_valid_variable_name(text) ||
         is_file_reference(text);
}

bool is_plain_value(const std::string& text) {
  return text.empty() || isValidNumber(text) || is_word_value(text);
}

}  // namespace detail

bool ParserValue::is_valid_variable_name(const std::string& text) {
  if (text.empty() || !(text[0] == '_' || detail::is_ascii_letter(text[0]))) return false;
  for (char c : text) {
    if (!detail::is_name_byte(c)) return false;
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

bool ParserValue::is_quoted_string(std::string text) {
  const std::string_view trimmed = detail::trim_blanks(text);
  // A lone quote character both begins and ends the text: it counts.
  return !trimmed.empty() && (is_single_quoted(trimmed) || is_double_quoted(trimmed));
}

}  // namespace qorin::parser
