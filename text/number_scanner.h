// The one reader of the strict number grammar behind isValidNumber,
// isValidInt and the validated conversions. It checks and converts in a
// single pass: blanks and the sign are read here, and so are the digits,
// point and exponent of what users type; anything longer goes to
// fast_float, whose syntax for a text that starts with a digit or a point
// is exactly the grammar's (at least one digit; an 'e' without exponent
// digits is left unread and so fails the tail test). Then the tail of
// blanks and at most one final line feed is read here again. Neither reader
// looks at the locale, and both round correctly, as strtod does in the "C"
// locale.
//
// Example:
//   " +1.5e3 \n" => valid, 1500, body "1.5e3"
//   "-42\t"      => valid, -42, body "42"
//   "1e+"        => not valid
#pragma once

#include <fast_float/fast_float.h>

#include <cstddef>
#include <cstdint>

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

// A number read from the front of a body; `end` is null when none was.
struct Body {
  double value;
  const char* end;
};

// The body [p, last) read by fast_float. Kept out of line, and its result
// returned in registers: its rare paths (long mantissas, big exponents)
// would otherwise cost every short text a long function prologue.
[[gnu::noinline]] inline Body read_body_slowly(const char* p, const char* last) {
  Body body{0.0, nullptr};
  const fast_float::from_chars_result read = fast_float::from_chars(p, last, body.value);
  if (read.ec == std::errc()) body.end = read.ptr;
  return body;
}

// What users type, read in the one pass: at most 19 digits and an exponent
// that leaves the value a product or quotient of two exact doubles, which
// is then correctly rounded (Clinger's fast path, as fast_float takes it).
// Nothing read (a null end) for anything else.
inline Body read_body_quickly(const char* p, const char* last) {
  constexpr Body kNotHere{0.0, nullptr};
  static constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                            1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  std::uint64_t mantissa = 0;
  const char* start = p;
  for (; p != last && is_digit(*p); ++p) mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
  std::ptrdiff_t digits = p - start;
  int exponent = 0;
  if (p != last && *p == '.') {
    const char* fraction = ++p;
    for (; p != last && is_digit(*p); ++p) mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    exponent = -static_cast<int>(p - fraction);
    digits -= exponent;
  }
  if (digits == 0 || digits > 19) return kNotHere;
  if (p != last && (*p == 'e' || *p == 'E')) {
    const char* q = p + 1;
    const bool negative = q != last && *q == '-';
    if (q != last && (*q == '-' || *q == '+')) ++q;
    // Without digits the 'e' is not part of the number.
    if (q != last && is_digit(*q)) {
      int written = 0;
      for (; q != last && is_digit(*q); ++q) {
        if (written > 1000) return kNotHere;
        written = written * 10 + (*q - '0');
      }
      exponent += negative ? -written : written;
      p = q;
    }
  }
  if (mantissa > (std::uint64_t{1} << 53) || exponent < -22 || exponent > 22) return kNotHere;
  // A rounding mode other than to nearest would make the product inexact.
  static volatile float smallest = 1.17549435e-38f;
  const float tiny = smallest;
  if (tiny + 1.0f != 1.0f - tiny) return kNotHere;
  const double m = static_cast<double>(mantissa);
  return {exponent < 0 ? m / kExactPowers[-exponent] : m * kExactPowers[exponent], p};
}

inline NumberScan scan_number(const char* p, const char* last) {
  NumberScan scan;
  while (p != last && is_blank(*p)) ++p;
  const bool negative = p != last && *p == '-';
  if (p != last && (*p == '+' || *p == '-')) ++p;
  // A second sign, "inf" and "nan" stop here; fast_float would take them.
  if (p == last || !(is_digit(*p) || *p == '.')) return scan;
  Body body = read_body_quickly(p, last);
  if (body.end == nullptr) body = read_body_slowly(p, last);
  if (body.end == nullptr) return scan;
  scan.value = body.value;
  scan.body_begin = p;
  scan.body_end = p = body.end;
  while (p != last && is_blank(*p)) ++p;
  if (p != last && *p == '\n') ++p;
  scan.valid = p == last;
  if (negative) scan.value = -scan.value;
  return scan;
}

}  // namespace qorin::detail
