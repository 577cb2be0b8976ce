// Number text against the C runtime it must equal (glibc, "C" locale):
// no crash; isValidInt implies isValidNumber; a valid number converts to
// strtod's value bit for bit; the prefix family agrees with strtod on the
// value (NaN payload and sign included), on success and on errno (apart
// from glibc's known subnormal hex error, see strtod_reference.h, where a
// long double reading is the reference instead); and fromDouble writes what
// snprintf writes, without ever throwing. The seeds in seeds/number hold
// the texts a random search rarely builds: exact images of subnormals, ties
// between them, the tininess threshold.
#include <qorin/text.h>

#include "fuzz/strtod_reference.h"

#include <cctype>
#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

[[noreturn]] void fail(const char* what, const std::string& text) {
  std::fprintf(stderr, "%s for \"%s\"\n", what, text.c_str());
  std::abort();
}

void check_grammar(const std::string& text) {
  const bool number = qorin::isValidNumber(text);
  if (qorin::isValidInt(text) && !number) fail("isValidInt without isValidNumber", text);
  if (!number) return;
  bool ok = false;
  const double value = qorin::toDouble_nothrow(text, &ok);
  if (!ok) fail("valid number not converted", text);
  if (bits_of(value) != bits_of(std::strtod(text.c_str(), nullptr))) fail("toDouble_nothrow differs from strtod", text);
}

// Whether `text` is "0x", at most 16 hex digits and a binary exponent of at
// most four digits, all of which a long double (64-bit mantissa, exponents
// down to -16382) holds exactly; «0x118p-70903» would be 0 there too.
bool is_short_hex_float(const std::string& text) {
  if (text.size() < 4 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) return false;
  std::size_t i = 2;
  while (i < text.size() && std::isxdigit(static_cast<unsigned char>(text[i]))) ++i;
  if (i == 2 || i > 18 || i == text.size() || (text[i] != 'p' && text[i] != 'P')) return false;
  if (++i < text.size() && text[i] == '-') ++i;
  if (i == text.size() || text.size() - i > 4) return false;
  while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) ++i;
  return i == text.size();
}

// Where glibc misrounds: the long double, rounded to double once by the
// hardware, with underflow when that rounding is inexact below DBL_MIN.
void check_hex_against_long_double(const std::string& text) {
  if (!is_short_hex_float(text)) return;
#if LDBL_MANT_DIG == 64
  const long double exact = std::strtold(text.c_str(), nullptr);
  const double rounded = static_cast<double>(exact);
  const bool underflow = static_cast<long double>(rounded) != exact && exact < std::ldexp(1.0L - 0x1p-54L, -1022);
  errno = 0;
  const std::optional<double> ours = qorin::toDouble_only(text);
  if (errno != (underflow ? ERANGE : 0) || ours.has_value() == underflow) fail("hex float underflow differs", text);
  if (ours && bits_of(*ours) != bits_of(rounded)) fail("hex float differs from the long double reference", text);
#endif
}

void check_prefix(const std::string& text) {
  errno = 0;
  char* end = nullptr;
  const double theirs = std::strtod(text.c_str(), &end);
  const int their_errno = errno;
  const bool converted = their_errno == 0 && end != text.c_str();
  if (qorin::testing::known_strtod_error(text.c_str(), theirs)) return check_hex_against_long_double(text);
  errno = 0;
  const std::optional<double> ours = qorin::toDouble_only(text);
  if (errno != their_errno) fail("errno differs from strtod", text);
  if (ours.has_value() != converted) fail("toDouble_only success differs from strtod", text);
  if (converted && bits_of(*ours) != bits_of(theirs)) fail("toDouble_only value differs from strtod", text);
}

void check_format(const std::uint8_t* data, std::size_t size) {
  if (size < 10) return;
  double x;
  std::memcpy(&x, data, sizeof x);
  static const char kFormats[] = {'e', 'E', 'f', 'g', 'G'};
  const char format = kFormats[data[8] % sizeof kFormats];
  const int precision = data[9] % 31;
  const char printf_format[] = {'%', '.', '*', format, '\0'};
  char expected[400];
  std::snprintf(expected, sizeof expected, printf_format, precision, x);
  try {
    if (qorin::fromDouble(x, static_cast<qorin::DoubleFormat>(format), precision, 0) != expected) {
      fail("fromDouble differs from snprintf", expected);
    }
  } catch (...) {
    fail("fromDouble threw", expected);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  check_grammar(text);
  check_prefix(text);
  check_format(data, size);
  return 0;
}
