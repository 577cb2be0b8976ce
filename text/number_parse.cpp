// The validated family: whatever the grammar accepts, converted as atof does
// in the "C" locale; "1.5" stays one and a half under a comma locale.
#include <qorin/text.h>

#include "text/number_scanner.h"

#include <cmath>
#include <stdexcept>

namespace qorin {

namespace {

constexpr const char* kExpectedNumber = "Expected a string containing a number";

bool parse_valid_number(const std::string& text, double& value) {
  const detail::NumberScan scan = detail::scan_number(text.data(), text.data() + text.size());
  value = scan.value;
  return scan.valid;
}

template <class T>
T report(bool success, T value, bool* ok) {
  if (ok) *ok = success;
  return success ? value : T{};
}

bool round_to_int(const std::string& text, int& result) {
  double x;
  if (!parse_valid_number(text, x)) return false;
  // The range test is on the unrounded value: 2147483647.4 passes, .5 fails.
  if (!(x < 2147483647.5 && x > -2147483648.5)) return false;
  result = static_cast<int>(x >= 0 ? std::trunc(x + 0.5) : std::trunc(x - 0.5));
  return true;
}

bool round_to_unsigned(const std::string& text, int& result) {
  double x;
  if (!parse_valid_number(text, x)) return false;
  if (!(x >= 0 && x < 4294967295.5)) return false;
  // Values from 2^31 up are returned as their 32-bit pattern on purpose.
  result = static_cast<int>(static_cast<unsigned int>(std::trunc(x + 0.5)));
  return true;
}

}  // namespace

// Flattened: fast_float inlined into the entry point takes a quarter off the
// time of a short text, where calls are a good part of the cost.
[[gnu::flatten]] double toDouble_nothrow(const std::string& text, bool* ok) {
  double value = 0.0;
  const bool success = parse_valid_number(text, value);
  return report(success, value, ok);
}

[[gnu::flatten]] double toDouble_or_throw(const std::string& text) {
  double value;
  if (!parse_valid_number(text, value)) throw std::runtime_error(kExpectedNumber);
  return value;
}

int toInt_nothrow(const std::string& text, bool* ok) {
  int value = 0;
  const bool success = round_to_int(text, value);
  return report(success, value, ok);
}

int toInt_or_throw(const std::string& text) {
  int value;
  if (!round_to_int(text, value)) throw std::runtime_error(kExpectedNumber);
  return value;
}

int toUnsignedInt_nothrow(const std::string& text, bool* ok) {
  int value = 0;
  const bool success = round_to_unsigned(text, value);
  return report(success, value, ok);
}

int toUnsignedInt_or_throw(const std::string& text) {
  int value;
  if (!round_to_unsigned(text, value)) throw std::runtime_error(kExpectedNumber);
  return value;
}

}  // namespace qorin
