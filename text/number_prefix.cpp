// The prefix family: strtod's acceptance, read through strtod_c so that the
// answer is the "C" locale's on every platform. errno is reset and then read
// as a strtod caller reads it.
#include <qorin/text.h>

#include "text/c_strtod.h"

#include <cerrno>
#include <stdexcept>

namespace qorin {

namespace {

enum class PrefixStatus { converted, out_of_range, not_a_number };

PrefixStatus convert_prefix(const std::string& text, double& value) {
  const char* first = text.c_str();
  errno = 0;
  const detail::CStrtod read = detail::strtod_c(first, first + text.size());
  if (errno == ERANGE) return PrefixStatus::out_of_range;
  if (errno != 0 || read.end == first) return PrefixStatus::not_a_number;
  value = read.value;
  return PrefixStatus::converted;
}

}  // namespace

std::optional<double> toDouble_only(const std::string& text) {
  double value;
  if (convert_prefix(text, value) != PrefixStatus::converted) return std::nullopt;
  return value;
}

double toDouble_only_no_throw(const std::string& text, bool* ok) {
  double value = 0.0;
  const bool success = convert_prefix(text, value) == PrefixStatus::converted;
  if (ok) *ok = success;
  return success ? value : 0.0;
}

double toDouble_only_or_throw(const std::string& text) {
  double value = 0.0;
  switch (convert_prefix(text, value)) {
    case PrefixStatus::converted: return value;
    case PrefixStatus::out_of_range: throw std::out_of_range("Out of range for a double");
    case PrefixStatus::not_a_number: break;
  }
  throw std::runtime_error("Expected a string containing a double");
}

}  // namespace qorin
