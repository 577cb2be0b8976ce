// The shapes a parameter value may take before its unit, shared by the
// ParserValue parse and its setters. Views into the caller's text: the parse
// tries many splits of one text and copies only the one it keeps.
#pragma once

#include <string_view>

namespace qorin::parser::detail {

// `text` without blanks (' ' only) at either end.
//
// Example: trim_blanks("  a b ") => "a b"    trim_blanks("\ta ") => "\ta"
inline std::string_view trim_blanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

inline bool begins_with(std::string_view text, std::string_view head) {
  return text.substr(0, head.size()) == head;
}

inline bool ends_with(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

// The bytes that may follow the first of a variable name: '_', ASCII letters
// and digits.
inline bool is_ascii_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
inline bool is_name_byte(char c) { return c == '_' || is_ascii_letter(c) || (c >= '0' && c <= '9'); }

// "file{" ... "}"
inline bool is_file_reference(std::string_view text) {
  return begins_with(text, "file{") && ends_with(text, "}");
}

// "(" ... ")" where the first '(' is closed by the last ')': a balanced scan
// that skips quoted strings. «(a)*(b)» is not parenthesised, and neither is
// anything unbalanced: taking such a pair off would change the expression.
//
// Example: is_parenthesised("(a+b)") => true    is_parenthesised("(a)*(b)") => false
//          is_parenthesised("(')')") => true    is_parenthesised("(((()))") => false
bool is_parenthesised(std::string_view text);

// What the canonical text "(" value ") " unit holds inside its parentheses,
// blanks trimmed. `text` must be parenthesised.
//
// Example: inside_parentheses("( a+b )") => "a+b"
inline std::string_view inside_parentheses(std::string_view text) {
  return trim_blanks(text.substr(1, text.size() - 2));
}

// isValidNumber, ParserValue::is_quoted_string and
// ParserValue::is_valid_variable_name on a view.
bool is_number(std::string_view text);
bool is_quoted(std::string_view text);
bool is_variable_name(std::string_view text);

// A quoted string, a variable name or a file reference.
inline bool is_word_value(std::string_view text) {
  return is_quoted(text) || is_variable_name(text) || is_file_reference(text);
}

// A value that reads back when glued to a unit: empty, a number or a word value.
inline bool is_plain_value(std::string_view text) {
  return text.empty() || is_number(text) || is_word_value(text);
}

// Whether the parentheses and quotes in `text` pair up, so that "(" text ")"
// is parenthesised.
//
// Example: is_balanced("(a)*(b)") => true    is_balanced("a)") => false    is_balanced("'('") => true
bool is_balanced(std::string_view text);

// Whether `value` glued to a unit («x_1» + «kHz») would not read back as
// value and unit: it is not a plain value, or it ends in a byte that the
// split takes for part of a unit name. Such values are written "(" value ") " unit.
//
// Example: needs_parentheses("x_1") => true    needs_parentheses("'a'") => false
//          needs_parentheses("1.5") => false   needs_parentheses("a+b") => true
inline bool needs_parentheses(std::string_view value) {
  if (value.empty() || is_number(value)) return false;
  return is_name_byte(value.back()) || !is_word_value(value);
}

// Whether a value read from "(" x ") " unit is written back that way: all
// but an empty value and a number, which glue to the unit unambiguously.
//
// Example: keeps_parentheses("a+b") => true   keeps_parentheses("a") => true
//          keeps_parentheses("5")   => false  keeps_parentheses("")  => false
inline bool keeps_parentheses(std::string_view inside) { return !inside.empty() && !is_number(inside); }

}  // namespace qorin::parser::detail
