// Text and number utilities: number text, string helpers, identifier encoding.
//
// Narrow strings hold UTF-8. Nothing here consults the process locale: a host
// program that calls setlocale(LC_ALL, "de_DE.UTF-8") still gets "1.5" read as
// one and a half and written with a point.
#pragma once

#include <qorin/export.h>

#include <cstdint>
#include <optional>
#include <string>

namespace qorin {

// ---------------------------------------------------------------------------
// Number text
// ---------------------------------------------------------------------------

// The conversion letter of fromDouble. Callers pass the plain character.
enum DoubleFormat : signed char {
  scientific = 'e',        // %.<p>e
  scientific_upper = 'E',  // %.<p>E
  fixed = 'f',             // %.<p>f
  general = 'g',           // %.<p>g
  general_upper = 'G',     // %.<p>G
};

// Whether `text` is a decimal number: optional leading blanks (space, tab),
// optional sign, digits with an optional point (at least one digit), an
// optional exponent, then optional blanks and at most one final line feed.
// No hex, no inf/nan, no digit separators.
//
// Example:
//   isValidNumber("5.")      => true     isValidNumber(".")      => false
//   isValidNumber(" \t7")    => true     isValidNumber("1e+")    => false
//   isValidNumber("1.5\n")   => true     isValidNumber("1.5\r\n") => false
QORIN_EXPORT bool isValidNumber(const std::string& text);

// Like isValidNumber, but digits only: no point, no exponent.
//
// Example:
//   isValidInt("+7") => true    isValidInt("42\n") => true    isValidInt("4.0") => false
QORIN_EXPORT bool isValidInt(const std::string& text);

// The validated family: the whole text must pass isValidNumber, then it is
// converted exactly (correctly rounded, as strtod in the "C" locale). A valid
// text beyond the double range gives an infinity or zero without error.
// `ok`, when not null, receives the success.
//
// Example:
//   toDouble_nothrow("1e999", &ok)  => +inf, ok = true
//   toDouble_or_throw("3 GHz")      => throws std::runtime_error
//                                      "Expected a string containing a number"
QORIN_EXPORT double toDouble_nothrow(const std::string& text, bool* ok = nullptr);
QORIN_EXPORT double toDouble_or_throw(const std::string& text);

// Validated like toDouble, rounded half away from zero; the range test is on
// the unrounded value (x >= 2147483647.5 or x <= -2147483648.5 fails).
//
// Example:
//   toInt_or_throw("2.5") => 3    toInt_or_throw("-2.5") => -3
//   toInt_or_throw("3e9") => throws "Expected a string containing a number"
QORIN_EXPORT int toInt_nothrow(const std::string& text, bool* ok = nullptr);
QORIN_EXPORT int toInt_or_throw(const std::string& text);

// Validated, rounded half up, 0 <= x < 4294967295.5. Note: the result is a
// signed int on purpose; values from 2^31 up come back as their 32-bit
// pattern and callers reinterpret them.
//
// Example:
//   toUnsignedInt_nothrow("4294967295") => -1 (0xFFFFFFFF), ok = true
//   toUnsignedInt_nothrow("-0.4")       => 0, ok = false
QORIN_EXPORT int toUnsignedInt_nothrow(const std::string& text, bool* ok = nullptr);
QORIN_EXPORT int toUnsignedInt_or_throw(const std::string& text);

// The prefix family: accepts whatever prefix strtod accepts in the "C"
// locale (leading white space, hex floats, inf, nan) and ignores the rest,
// on every platform alike. Overflow and underflow (ERANGE: a result that is
// zero or subnormal and inexact) fail. errno is reset and left as strtod
// leaves it.
//
// Example:
//   toDouble_only("12abc")          => 12      toDouble_only("abc") => nullopt
//   toDouble_only("1e999")          => nullopt
//   toDouble_only_or_throw("1e999") => throws std::out_of_range "Out of range for a double"
//   toDouble_only_or_throw("")      => throws std::runtime_error
//                                      "Expected a string containing a double"
QORIN_EXPORT std::optional<double> toDouble_only(const std::string& text);
QORIN_EXPORT double toDouble_only_no_throw(const std::string& text, bool* ok = nullptr);
QORIN_EXPORT double toDouble_only_or_throw(const std::string& text);

// Whether x has a non-zero fractional part. Infinities: false; NaN: true.
QORIN_EXPORT bool has_fraction(double x);

// x written as printf writes it in the "C" locale with %.<precision><format>
// (exponents of at least two digits on every platform; a negative precision
// reads as 6), then padString'ed to `width`. Any other format throws
// std::runtime_error "Invalid format flag.".
//
// Example:
//   fromDouble(0.1, 'g', 6, 0)  => "0.1"        fromDouble(1e20, 'g', 6, 0) => "1e+20"
//   fromDouble(2.0, 'f', 3, 8)  => "   2.000"   fromDouble(2.0, 'f', 3, -8) => "2.000   "
QORIN_EXPORT std::string fromDouble(double x, DoubleFormat format, int precision, int width);

// Plain decimal, then padString'ed to `width`.
//
// Example:
//   fromInt(-5, 4) => "  -5"    fromInt(12345, 3) => "12345"
QORIN_EXPORT std::string fromInt(int value, int width);
QORIN_EXPORT std::string fromUnsignedInt(unsigned int value, int width);

// Writes `value` in decimal and its NUL into `buffer` when the text has at
// most `size` characters. Note: a text of exactly `size` characters writes
// size + 1 bytes, so the buffer must hold size + 1 bytes; callers rely on it.
// On failure buffer[0] is set to NUL and the result is false.
//
// Example:
//   format_int_to_buffer(-123, 4, buf) => true, buf = "-123"
//   format_int_to_buffer(-123, 3, buf) => false, buf = ""
QORIN_EXPORT bool format_int_to_buffer(long long value, unsigned int size, char* buffer);

// Pads with spaces to |width| characters: in front for a positive width
// (right-aligned), behind for a negative one. Never truncates.
//
// Example:
//   padString("ab", 4) => "  ab"    padString("ab", -4) => "ab  "    padString("abc", 2) => "abc"
QORIN_EXPORT std::string padString(const std::string& text, int width);

// `count` copies of `c`.
QORIN_EXPORT std::string repeatChar(char c, std::uint64_t count);

}  // namespace qorin
