// Text and number utilities: number text, string helpers, UTF-8/UTF-16
// conversion, identifier encoding.
//
// Narrow strings hold UTF-8. Nothing here consults the process locale: a host
// program that calls setlocale(LC_ALL, "de_DE.UTF-8") still gets "1.5" read as
// one and a half and written with a point, the same bytes on every platform.
// Every function is re-entrant and keeps no state. Conversions come in pairs:
// X_nothrow reports success through an optional bool*, X_or_throw throws
// std::runtime_error (std::out_of_range for a double beyond range).
//
// Start with toDouble_or_throw (reads a whole text as a number) and
// fromDouble (writes one as printf would).
//
// Example:
//   qorin::toDouble_or_throw(" 2.5e3")             => 2500
//   qorin::toDouble_or_throw("3 GHz")              => throws "Expected a string containing a number"
//   qorin::fromDouble(1e-11, qorin::general, 6, 0) => "1e-11"
//   qorin::encode_to_variable_name("a.b c", "")    => "a_2eb_20c"
#pragma once

#include <qorin/export.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

// ---------------------------------------------------------------------------
// String utilities
// ---------------------------------------------------------------------------
// Byte-wise, ASCII rules only, no locale.

// Splits `text` at every byte that occurs in `delimiters` (a set of single
// bytes, not a separator sequence). Each delimiter ends exactly one token;
// empty tokens are kept only when `keep_empty` is true.
//
// Example:
//   tokenize("a b  c", " ", false) => {"a", "b", "c"}
//   tokenize("a b  c", " ", true)  => {"a", "b", "", "c"}
//   tokenize("a,", ",", true)      => {"a", ""}
//   tokenize("", ",", true)        => {""}      tokenize("", ",", false) => {}
//   tokenize("abc", "", true)      => {"abc"}
QORIN_EXPORT std::vector<std::string> tokenize(const std::string& text, const std::string& delimiters,
                                               bool keep_empty);

// Drops leading and trailing white space and turns every inner run of it into
// one space. White space is exactly space, \t, \n, \v, \f and \r.
//
// Example:
//   trim_and_remove_extra_internal_whitespace("  a \t\n b  ") => "a b"
//   trim_and_remove_extra_internal_whitespace("\t")           => ""
QORIN_EXPORT std::string trim_and_remove_extra_internal_whitespace(const std::string& text);

// Double quotes only; single quotes are ordinary bytes and nothing is escaped.
//
// Example:
//   isQuoted("\"\"") => true        isQuoted("\"") => false
//   stripQuotes("\"\"x\"\"") => "\"x\""   (one level only)
//   stripQuotes("abc")       => "abc"
//   addQuotes("")            => "\"\""    addQuotes("\"a\"") => "\"\"a\"\""
QORIN_EXPORT bool isQuoted(const std::string& text);
QORIN_EXPORT std::string stripQuotes(const std::string& text);
QORIN_EXPORT std::string addQuotes(const std::string& text);

// A less-than for sorting names naturally: digit runs compare by value,
// A-Z compare as a-z, every other byte as a signed char (so bytes from 0x80
// up order before all ASCII).
//
// Example:
//   ("a2", "a10") => true      ("a10", "a2") => false    ("B", "a") => false
//   ("", "x")     => true      ("x", "")     => false    ("abc", "abcd") => true
//
// Note: these quirks are relied on and kept: "File2" ~ "file2" and
// "a007" ~ "a7" (leading zeros vanish); after two equal numbers the next
// byte of each side is compared and consumed together, so "x1y" ~ "x01y";
// a digit run is read into a 32-bit signed int that wraps, so runs longer
// than nine digits may order wrongly.
struct QORIN_EXPORT CompareStringNumberAwareIgnoreCase {
  bool operator()(const std::string& a, const std::string& b) const;
};

// n with its English ordinal suffix; the sign takes no part in the choice.
//
// Example:
//   1 => "1st"   2 => "2nd"   3 => "3rd"   4 => "4th"   0 => "0th"
//   11 => "11th" 12 => "12th" 13 => "13th" 21 => "21st" 112 => "112th"
//   -1 => "-1st" -12 => "-12th"
QORIN_EXPORT std::string convert_number_to_ordinal(int n);

// ---------------------------------------------------------------------------
// UTF-8 and UTF-16
// ---------------------------------------------------------------------------
// The bridge between the library's UTF-8 strings and the platform's UTF-16
// interfaces. All-ASCII input is widened or narrowed unit by unit without
// validation work; anything else goes through utfcpp. There is no
// replacement character and no partial result.
//
// Failure: malformed UTF-8 throws utf8::invalid_utf8 ("Invalid UTF-8"),
// including a sequence cut off at the end and an encoded surrogate or a code
// point above U+10FFFF. Unpaired surrogates (a trail without a lead, a lead
// at the end, a lead followed by anything but a trail) throw
// utf8::invalid_utf16 ("Invalid UTF-16"). Catch them as utf8::exception or
// std::exception if the kind does not matter.
//
// Example:
//   toUtf16("abc")                       => u"abc"
//   toUtf16("\xF0\x9F\x98\x80")          => {0xD83D, 0xDE00}
//   toKString(u"\xD83D\xDE00")           => "\xF0\x9F\x98\x80"
//   toKString(std::u16string(1, 0xDE00)) => throws utf8::invalid_utf16
//   toUtf16("\xC0\xAF")                  => throws utf8::invalid_utf8 (overlong)
QORIN_EXPORT std::u16string toUtf16(const std::string& utf8);

// UTF-16 in a wide string. On Windows wchar_t is 16 bits and this is the
// native wide form. On Linux wchar_t is 32 bits and the string holds the same
// UTF-16 code units, each widened: a code point above U+FFFF stays two units
// (a surrogate pair); it is not UTF-32.
//
// Example:
//   toWString("\xF0\x9F\x98\x80") => {0xD83D, 0xDE00} on both platforms
QORIN_EXPORT std::wstring toWString(const std::string& utf8);

// UTF-16 back to UTF-8. The wide-string form reads UTF-16 code units on both
// platforms (the form toWString writes); on Linux a unit above 0xFFFF is not
// UTF-16 and throws utf8::invalid_utf16.
QORIN_EXPORT std::string toKString(const std::u16string& utf16);
QORIN_EXPORT std::string toKString(const std::wstring& utf16);

// ---------------------------------------------------------------------------
// Identifier encoding
// ---------------------------------------------------------------------------
// Maps any byte string to letters, digits and underscores behind a prefix, so
// that it can serve as a variable name. Encoded names are stored and
// exchanged: the escape forms below must never change.
//
// Encoding: letters and digits are copied, "_" becomes "__", any other byte
// becomes "_" + the byte as a signed char in lower-case hex without padding.
// A name that does not start with a letter gets the marker "Z_Z" first.
//
// Example:
//   encode_to_variable_name("", "p_")      => "p_"
//   encode_to_variable_name("freq1", "v")  => "vfreq1"
//   encode_to_variable_name("1st", "v")    => "vZ_Z1st"
//   encode_to_variable_name("_x", "v")     => "vZ_Z__x"
//   encode_to_variable_name("a.b c", "")   => "a_2eb_20c"
//   encode_to_variable_name("\t", "")      => "Z_Z_9"
//   encode_to_variable_name("\xC3", "")    => "Z_Z_-3d"
//
// Note: only printable ASCII round-trips. Bytes below 0x10 encode to one hex
// digit and bytes from 0x80 up to a negative number, while decoding always
// reads exactly two lower-case hex digits: "\tb" encodes to "Z_Z_9b", which
// decodes to "\x9B"; "_-3d" does not decode at all.
QORIN_EXPORT std::string encode_to_variable_name(const std::string& name, const std::string& prefix);

// The inverse: (name, true), or (text unchanged, false) when `text` does not
// start with `prefix` or holds anything but letters, digits, "__" and "_"
// followed by two lower-case hex digits. A "Z_Z" right after the prefix is
// skipped without checking what follows it. Never throws.
//
// Example:
//   decode_from_variable_name("a_2eb_20c", "") => ("a.b c", true)
//   decode_from_variable_name("Z_Z", "")       => ("", true)
//   decode_from_variable_name("q_2E", "")      => ("q_2E", false)   upper-case hex
//   decode_from_variable_name("ab_", "")       => ("ab_", false)
//   decode_from_variable_name("xab", "y")      => ("xab", false)    prefix missing
QORIN_EXPORT std::pair<std::string, bool> decode_from_variable_name(const std::string& text,
                                                                    const std::string& prefix);

}  // namespace qorin
