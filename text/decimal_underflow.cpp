// glibc's underflow report for decimal texts. fast_float gives the right
// double but not whether the text was exact, and glibc reports ERANGE only
// for tiny inexact results; a few hundred digits can be exact. Only results
// at or below DBL_MIN get here past the first test, so plain big integers
// are fast enough.
#include "text/c_strtod.h"

#include <cfloat>
#include <cstdint>
#include <cstring>
#include <vector>

namespace qorin::detail {

namespace {

// Both sides are compared as integers after scaling by 10^kScale: every
// double at or below DBL_MIN, and the tininess threshold, is a multiple of
// 2^-1076 and so of 10^-1076.
constexpr std::int64_t kScale = 1076;
constexpr std::int64_t kExponentLimit = std::int64_t{1} << 40;

class BigUint {
 public:
  explicit BigUint(std::uint64_t value) {
    for (; value != 0; value >>= 32) limbs_.push_back(static_cast<std::uint32_t>(value));
  }

  void multiply_add(std::uint32_t factor, std::uint32_t addend) {
    std::uint64_t carry = addend;
    for (std::uint32_t& limb : limbs_) {
      carry += std::uint64_t{limb} * factor;
      limb = static_cast<std::uint32_t>(carry);
      carry >>= 32;
    }
    if (carry != 0) limbs_.push_back(static_cast<std::uint32_t>(carry));
  }

  // Multiplies by base^count; `chunk` = base^chunk_count must fit 32 bits.
  void multiply_power(std::uint32_t chunk, int chunk_count, std::uint32_t base, std::int64_t count) {
    for (; count >= chunk_count; count -= chunk_count) multiply_add(chunk, 0);
    for (; count > 0; --count) multiply_add(base, 0);
  }

  int compare(const BigUint& other) const {
    if (limbs_.size() != other.limbs_.size()) return limbs_.size() < other.limbs_.size() ? -1 : 1;
    for (std::size_t i = limbs_.size(); i-- > 0;) {
      if (limbs_[i] != other.limbs_[i]) return limbs_[i] < other.limbs_[i] ? -1 : 1;
    }
    return 0;
  }

 private:
  std::vector<std::uint32_t> limbs_;  // least significant first, no zero on top
};

// mantissa * 2^exponent * 10^kScale, as an integer (exponent >= -kScale).
BigUint scaled_dyadic(std::uint64_t mantissa, std::int64_t exponent) {
  BigUint n(mantissa);
  n.multiply_power(1220703125, 13, 5, kScale);             // 5^13
  n.multiply_power(std::uint32_t{1} << 31, 31, 2, kScale + exponent);
  return n;
}

// The decimal text as floor(x * 10^kScale) plus whether anything was cut.
struct ScaledDecimal {
  BigUint value{0};
  bool cut = false;
  bool zero = true;
};

ScaledDecimal scale_decimal(const char* first, const char* last) {
  const char* mantissa_end = first;
  std::int64_t integer_digits = 0;
  bool in_fraction = false;
  for (; mantissa_end != last && (digit_value(*mantissa_end) <= 9 || *mantissa_end == '.'); ++mantissa_end) {
    if (*mantissa_end == '.') in_fraction = true;
    else if (!in_fraction) ++integer_digits;
  }
  std::int64_t exponent = 0;
  if (mantissa_end != last) {  // fast_float only includes a complete exponent
    const char* p = mantissa_end + 1;
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    for (; p != last; ++p) {
      if (exponent < kExponentLimit) exponent = exponent * 10 + (*p - '0');
    }
    if (negative) exponent = -exponent;
  }

  // Digit i (0-based, points skipped) stands for d * 10^(integer_digits - 1 - i + exponent).
  ScaledDecimal scaled;
  std::int64_t place = integer_digits - 1 + exponent;
  std::int64_t lowest_kept = 0;
  for (const char* p = first; p != mantissa_end; ++p) {
    if (*p == '.') continue;
    const auto digit = static_cast<std::uint32_t>(*p - '0');
    if (place >= -kScale) {
      if (digit != 0 || !scaled.zero) {
        scaled.value.multiply_add(10, digit);
        scaled.zero = false;
        lowest_kept = place;
      }
    } else if (digit != 0) {
      scaled.cut = true;
      scaled.zero = false;
    }
    --place;
  }
  scaled.value.multiply_power(1000000000, 9, 10, lowest_kept + kScale);
  return scaled;
}

// Sign of x - mantissa * 2^exponent.
int compare(const ScaledDecimal& x, std::uint64_t mantissa, std::int64_t exponent) {
  const int order = x.value.compare(scaled_dyadic(mantissa, exponent));
  return order == 0 && x.cut ? 1 : order;
}

}  // namespace

bool decimal_underflows(const char* first, const char* last, double magnitude) {
  if (magnitude > DBL_MIN) return false;
  const ScaledDecimal x = scale_decimal(first, last);
  if (x.zero) return false;         // an exact zero is no underflow
  if (magnitude == 0.0) return true;
  if (magnitude == DBL_MIN) {
    // Tiny unless it rounds to DBL_MIN with 53 bits and no exponent limit,
    // that is unless x >= (2^54 - 1) * 2^-1076.
    return compare(x, (std::uint64_t{1} << 54) - 1, -1076) < 0;
  }
  std::uint64_t bits;
  std::memcpy(&bits, &magnitude, sizeof bits);
  return compare(x, bits, -1074) != 0;  // a subnormal result: ERANGE when inexact
}

}  // namespace qorin::detail
