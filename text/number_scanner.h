// The one reader of the strict number grammar behind isValidNumber,
// isValidInt and the validated conversions. It checks and converts in a
// single pass: blanks and the sign are read here, the digits, point and
// exponent by fast_float, whose syntax for a text that starts with a digit
// or a point is exactly the grammar's (at least one digit; an 'e' without
// exponent digits is left unread and so fails the tail test), and then the
// tail of blanks and at most one final line feed is read here again.
// fast_float never reads the locale and rounds correctly, as strtod does in
// the "C" locale.
//
// Example:
//   " +1.5e3 \n" => valid, 1500, body "1.5e3"
//   "-42\t"      => valid, -42, body "42"
//   "1e+"        => not valid
#pragma once

#include <fast_float/fast_float.h>

namespace qorin::detail {

struct NumberScan {
  bool valid = false;
  double value = 0.0;  // out of range: an infinity or zero, as atof gives
  // The number without blanks and sign.
  const char* body_begin = nullptr;
  const char* body_end = nullptr;
};

inline bool is_blank(char c) { return c == ' ' || c == '\t'; }
inline bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

inline NumberScan scan_number(const char* p, const char* last) {
  NumberScan scan;
  while (p != last && is_blank(*p)) ++p;
  const bool negative = p != last && *p == '-';
  if (p != last && (*p == '+' || *p == '-')) ++p;
  // A second sign, "inf" and "nan" stop here; fast_float would take them.
  if (p == last || !(is_digit(*p) || *p == '.')) return scan;
  const fast_float::from_chars_result read = fast_float::from_chars(p, last, scan.value);
  if (read.ec != std::errc()) return scan;
  scan.body_begin = p;
  scan.body_end = p = read.ptr;
  while (p != last && is_blank(*p)) ++p;
  if (p != last && *p == '\n') ++p;
  scan.valid = p == last;
  if (negative) scan.value = -scan.value;
  return scan;
}

}  // namespace qorin::detail
