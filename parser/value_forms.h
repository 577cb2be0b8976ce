// The shapes a parameter value may take before its unit, shared by the
// ParserValue parse and its setters.
#pragma once

#include <string>
#include <string_view>

namespace qorin::parser::detail {

// `text` without blanks (' ' only) at either end.
//
// Example: trim_blanks("  a b ") => "a b"    trim_blanks("\ta ") => "\ta"
std::string_view trim_blanks(std::string_view text);

bool begins_with(std::string_view text, std::string_view head);
bool ends_with(std::string_view text, std::string_view tail);

// The bytes that may follow the first of a variable name: '_', ASCII letters
// and digits.
bool is_name_byte(char c);

// "file{" ... "}"
bool is_file_reference(std::string_view text);

// "(" ... ")"
bool is_parenthesised(std::string_view text);

// What the canonical text "(" value ") " unit holds inside its parentheses,
// blanks trimmed. `text` must be parenthesised.
//
// Example: inside_parentheses("( a+b )") => "a+b"
std::string inside_parentheses(std::string_view text);

// A quoted string, a variable name or a file reference.
bool is_word_value(const std::string& text);

// A value that reads back when glued to a unit: empty, a number or a word value.
bool is_plain_value(const std::string& text);

}  // namespace qorin::parser::detail
