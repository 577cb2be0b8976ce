#include "text/c_strtod.h"

#include "text/number_scanner.h"

#include <fast_float/fast_float.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>

namespace qorin::detail {

namespace {

// The bits of the NaN that glibc's strtod returns for "nan".
constexpr std::uint64_t kQuietNan = 0x7FF8000000000000;
// glibc puts the number of "nan(number)" into the 51 mantissa bits below the
// quiet bit.
constexpr std::uint64_t kNanPayloadMask = (std::uint64_t{1} << 51) - 1;

bool is_c_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_alnum(char c) {
  return is_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Whether [p, last) starts with `word` (lower case), ignoring case.
bool starts_with_word(const char* p, const char* last, const char* word) {
  for (; *word; ++word, ++p) {
    if (p == last || lower(*p) != *word) return false;
  }
  return true;
}

// strtoull(text, &end, 0) over the n-char sequence of "nan(...)": returns
// whether it reads the whole sequence, as glibc requires before it uses the
// number. Overflow saturates and sets ERANGE, which glibc lets through.
bool read_nan_number(const char* first, const char* last, std::uint64_t& value) {
  int base = 10;
  const char* p = first;
  // "0x" counts only before a hex digit; otherwise the "0" is read alone.
  if (last - p >= 3 && p[0] == '0' && lower(p[1]) == 'x' && digit_value(p[2]) < 16) {
    base = 16;
    p += 2;
  } else if (p != last && p[0] == '0') {
    base = 8;
  }
  value = 0;
  bool overflow = false;
  for (; p != last && digit_value(*p) < base; ++p) {
    const auto digit = static_cast<std::uint64_t>(digit_value(*p));
    if (value > (std::numeric_limits<std::uint64_t>::max() - digit) / base) overflow = true;
    value = value * base + digit;
  }
  if (overflow) {
    value = std::numeric_limits<std::uint64_t>::max();
    errno = ERANGE;
  }
  return p == last;
}

// After "nan": an optional "(n-char-sequence)".
CStrtod read_nan(const char* p, const char* last) {
  std::uint64_t bits = kQuietNan;
  if (p != last && *p == '(') {
    const char* sequence = p + 1;
    const char* close = sequence;
    while (close != last && (is_alnum(*close) || *close == '_')) ++close;
    if (close != last && *close == ')') {
      std::uint64_t number;
      if (read_nan_number(sequence, close, number)) bits |= number & kNanPayloadMask;
      p = close + 1;
    }
  }
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return {value, p};
}

}  // namespace

CStrtod strtod_c(const char* first, const char* last) {
  const char* p = first;
  while (p != last && is_c_space(*p)) ++p;
  bool negative = false;
  if (p != last && (*p == '+' || *p == '-')) negative = *p++ == '-';

  CStrtod result{0.0, first};
  bool range_error = false;
  if (starts_with_word(p, last, "inf")) {
    p += 3;
    if (starts_with_word(p, last, "inity")) p += 5;
    result = {std::numeric_limits<double>::infinity(), p};
  } else if (starts_with_word(p, last, "nan")) {
    result = read_nan(p + 3, last);
  } else if (last - p >= 2 && p[0] == '0' && lower(p[1]) == 'x') {
    const HexFloat hex = parse_hex_float(p + 2, last);
    // "0x" without hex digits is the number 0 followed by text.
    result = hex.end ? CStrtod{hex.magnitude, hex.end} : CStrtod{0.0, p + 1};
    range_error = hex.range_error;
  } else if (p != last && (is_digit(*p) || *p == '.')) {
    const fast_float::from_chars_result read = fast_float::from_chars(p, last, result.value);
    if (read.ec != std::errc()) return {0.0, first};
    result.end = read.ptr;
    range_error = result.value == std::numeric_limits<double>::infinity() ||
                  decimal_underflows(p, read.ptr, result.value);
  } else {
    return {0.0, first};
  }
  if (range_error) errno = ERANGE;
  if (negative) result.value = -result.value;
  return result;
}

}  // namespace qorin::detail
