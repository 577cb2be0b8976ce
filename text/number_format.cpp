// Numbers to text. Doubles go through std::to_chars, which writes exactly
// what printf writes in the "C" locale but never reads the locale and never
// touches the C runtime (msvcrt's printf writes "1e+020").
#include <qorin/text.h>

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace qorin {

namespace {

struct Style {
  std::chars_format format;
  bool upper;
};

Style style_of(DoubleFormat format) {
  switch (format) {
    case scientific: return {std::chars_format::scientific, false};
    case scientific_upper: return {std::chars_format::scientific, true};
    case fixed: return {std::chars_format::fixed, false};
    case general: return {std::chars_format::general, false};
    case general_upper: return {std::chars_format::general, true};
  }
  throw std::runtime_error("Invalid format flag.");
}

// A double has at most 767 significant decimal digits, so %g prints the same
// for every precision from here up; capping keeps the buffer small.
constexpr int kGeneralPrecisionCap = 1100;
// Room beside the digits: sign, point, "e+308"; 'f' adds up to 309 integer digits.
constexpr int kRoomBesideDigits = 8;
constexpr int kFixedIntegerDigits = 309;

char to_upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

void upper_case(char* first, char* last) {
  for (char* p = first; p != last; ++p) *p = to_upper(*p);
}

std::string write_double(double x, Style style, int precision, std::size_t capacity) {
  char local[512];
  if (capacity <= sizeof local) {
    char* const end = std::to_chars(local, local + sizeof local, x, style.format, precision).ptr;
    if (style.upper) upper_case(local, end);
    return std::string(local, end);
  }
  std::string text(capacity, '\0');
  char* const end = std::to_chars(text.data(), text.data() + capacity, x, style.format, precision).ptr;
  if (style.upper) upper_case(text.data(), end);
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

}  // namespace

std::string fromDouble(double x, DoubleFormat format, int precision, int width) {
  const Style style = style_of(format);
  if (precision < 0) precision = 6;  // as printf reads a negative precision
  if (style.format == std::chars_format::general && precision > kGeneralPrecisionCap) {
    precision = kGeneralPrecisionCap;
  }
  const std::size_t capacity = static_cast<std::size_t>(precision) + kRoomBesideDigits +
                               (style.format == std::chars_format::fixed ? kFixedIntegerDigits : 0);
  std::string text = write_double(x, style, precision, capacity);
  if (width != 0) return padString(text, width);
  return text;
}

std::string fromInt(int value, int width) { return padString(fmt::format_int(value).str(), width); }

std::string fromUnsignedInt(unsigned int value, int width) {
  return padString(fmt::format_int(value).str(), width);
}

bool format_int_to_buffer(long long value, unsigned int size, char* buffer) {
  fmt::memory_buffer text;
  fmt::format_to(std::back_inserter(text), "{}", value);
  if (text.size() > size) {
    buffer[0] = '\0';
    return false;
  }
  // size + 1 bytes when the text fills `size`: the caller's buffer holds them.
  std::copy(text.begin(), text.end(), buffer);
  buffer[text.size()] = '\0';
  return true;
}

bool has_fraction(double x) {
  double integral;
  return std::modf(x, &integral) != 0.0;
}

}  // namespace qorin
