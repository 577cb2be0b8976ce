// The one scanner of the strict number grammar behind isValidNumber,
// isValidInt and the validated conversions. It runs once over the text and
// records where the number itself lies, so a converter can read just that.
//
// Example:
//   " +1.5e3 \n" => valid, number = "1.5e3" (a '+' is left out), integral = false
//   "-42\t"      => valid, number = "-42", integral = true
//   "1e+"        => not valid
#pragma once

namespace qorin::detail {

struct NumberScan {
  bool valid = false;
  bool integral = false;  // no point and no exponent
  // The number without blanks and without a leading '+' (a '-' is kept).
  const char* number_begin = nullptr;
  const char* number_end = nullptr;
};

inline bool is_blank(char c) { return c == ' ' || c == '\t'; }
inline bool is_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

inline const char* skip_digits(const char* p, const char* last) {
  while (p != last && is_digit(*p)) ++p;
  return p;
}

inline NumberScan scan_number(const char* p, const char* last) {
  NumberScan scan;
  while (p != last && is_blank(*p)) ++p;
  if (p != last && *p == '+') {
    scan.number_begin = ++p;
  } else {
    scan.number_begin = p;
    if (p != last && *p == '-') ++p;
  }

  const char* digits = p;
  p = skip_digits(p, last);
  bool has_digit = p != digits;
  scan.integral = true;
  if (p != last && *p == '.') {
    const char* fraction = ++p;
    p = skip_digits(p, last);
    has_digit = has_digit || p != fraction;
    scan.integral = false;
  }
  if (!has_digit) return scan;
  if (p != last && (*p == 'e' || *p == 'E')) {
    ++p;
    if (p != last && (*p == '+' || *p == '-')) ++p;
    const char* exponent = p;
    p = skip_digits(p, last);
    if (p == exponent) return scan;
    scan.integral = false;
  }
  scan.number_end = p;

  while (p != last && is_blank(*p)) ++p;
  if (p != last && *p == '\n') ++p;
  scan.valid = p == last;
  return scan;
}

}  // namespace qorin::detail
