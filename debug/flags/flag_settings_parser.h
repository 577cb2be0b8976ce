// The grammar of _QDX_DEBUG_FLAGS, matched by hand in one pass.
//
// The variable has always been read with three ECMAScript patterns:
//   entry  (case-insensitive)
//          ^\s*([a-z0-9_]+)(\s*=\s*([-+0-9.e]+|"[^"]*"|'[^']*'))?\s*(,\s*(.*))?$
//   skip   ^([^,]*),(.+)$
//   quoted (["'])(.*)\1
// applied in a loop to the text still unread: an entry match records name
// (group 1) and value (group 3, "1" when absent) and continues with group 5;
// otherwise a skip match continues with group 2; otherwise reading ends.
// std::regex matches these recursively, one stack frame per character, so a
// long variable overflows the stack, and re-matching the rest after every
// entry is quadratic. This matcher accepts the same language, gives the same
// settings and runs in linear time; fuzz/debug_flags_fuzz.cpp compares the
// two.
//
// What the patterns imply, and the matcher keeps:
//   - \s is " \t\n\v\f\r"; '.' is anything but '\n' and '\r', so a rest that
//     holds a line break after its leading blanks matches neither pattern and
//     ends reading;
//   - names and unquoted values are taken whole (no backtracking can shorten
//     them), a quoted value ends at the next quote of its kind.
// Exported for the fuzz target and the benchmark; not part of the interface.
#pragma once

#include <qorin/export.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace qorin::Debug::detail {

// Setting name => value text as written (quotes included).
using FlagSettings = std::unordered_map<std::string, std::string>;

// `steps`, when not null, receives the work done: the length of the text
// (the line-break search) plus every character the matcher looked at.
//
// Example:
//   parseFlagSettings(" A = 1 ,b=\"x,y\",C")  => {A: "1", b: "\"x,y\"", C: "1"}
//   parseFlagSettings("A=abc,B")              => {B: "1"}
//   parseFlagSettings("A,B\nC")               => {}  (no rest can be matched)
QORIN_EXPORT FlagSettings parseFlagSettings(std::string_view text, std::size_t* steps = nullptr);

// The text inside the quotes when `value` is quoted whole with one kind of
// quote and holds no line break; the quoted pattern's group 2.
//
// Example:
//   quotedText("'a\"b'") => "a\"b"    quotedText("\"a'") => nullopt
//   quotedText("2.5")    => nullopt
QORIN_EXPORT std::optional<std::string_view> quotedText(std::string_view value);

// The number `text` begins with, as atof reads it in the "C" locale whatever
// the process's locale; 0 when none.
//
// Example:
//   leadingNumber("2.5e1") => 25    leadingNumber("12ab") => 12    leadingNumber("ab") => 0
double leadingNumber(std::string_view text);

// `value` written as "%.<precision>g" writes it in the "C" locale.
//
// Example:
//   numberText(0.5, 15) => "0.5"    numberText(1e20, 15) => "1e+20"
std::string numberText(double value, int precision);

}  // namespace qorin::Debug::detail
