// strtod as glibc has it in the "C" locale, written out so that every
// platform gets the same answers: the msvcrt strtod that MinGW links knows
// no hex floats, inf or nan, and any runtime's strtod reads the locale's
// decimal point.
//
// Accepted: leading white space (" \t\n\v\f\r"), one sign, then a decimal
// number, "0x" with hex digits and an optional binary exponent "p[+-]digits",
// "inf", "infinity", "nan" or "nan(chars)" (letters, digits and '_'), all
// letters in either case. Results are correctly rounded to nearest.
//
// errno: set to ERANGE, as glibc does, on overflow (result infinite), on
// underflow (result tiny after rounding and inexact: zero, subnormal, or
// DBL_MIN reached from below), and when the number inside "nan(...)"
// overflows 64 bits; otherwise left alone.
//
// Example:
//   "  12abc"  => 12, end after "12"          "0x1.8p1" => 3
//   "-infinit" => -inf, end after "-inf"      "abc"     => 0, end = first
//   "1e-400"   => 0, errno = ERANGE           "nan(7)"  => quiet NaN, payload 7
#pragma once

namespace qorin::detail {

struct CStrtod {
  double value = 0.0;
  const char* end = nullptr;  // == first when nothing was converted
};

// The text ends at `last` or at a NUL, whichever comes first.
CStrtod strtod_c(const char* first, const char* last);

// The parts of strtod_c that live in their own files.

inline char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// The value of a digit in bases up to 36 ('a' and 'A' are 10); 99 for others.
inline int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char l = lower(c);
  return (l >= 'a' && l <= 'z') ? l - 'a' + 10 : 99;
}

struct HexFloat {
  double magnitude = 0.0;
  const char* end = nullptr;  // null when no hex digit follows
  bool range_error = false;
};
// Reads the hex digits after "0x" and an optional binary exponent.
HexFloat parse_hex_float(const char* first, const char* last);

// Whether glibc reports underflow for the decimal text [first, last)
// (digits, optional point, optional exponent; already known to convert to
// `magnitude`, which is finite). Exact, for any number of digits.
bool decimal_underflows(const char* first, const char* last, double magnitude);

}  // namespace qorin::detail
