// Hex floats ("0x1.8p3"), rounded to nearest-even with glibc's range
// reports: underflow is judged after rounding (IEEE "tininess after
// rounding", as on x86), so 0x1.fffffffffffff8p-1023 becomes DBL_MIN quietly
// while 0x1.fffffffffffffp-1023 becomes DBL_MIN with ERANGE. Subnormals are
// rounded once, straight onto their grid, as current glibc does (2.36 and
// older lose one bit there).
#include "text/c_strtod.h"

#include <cstdint>
#include <cstring>

namespace qorin::detail {

namespace {

constexpr int kMantissaBits = 53;  // with the hidden bit
constexpr int kMinExponent = -1022;
constexpr int kMaxExponent = 1023;
constexpr std::uint64_t kExponentOne = std::uint64_t{1} << 52;
constexpr std::uint64_t kInfinityBits = 0x7FF0000000000000;
// Exponents beyond this saturate; any value with such an exponent is far
// out of range either way, and sums stay far from int64 overflow.
constexpr std::int64_t kExponentLimit = std::int64_t{1} << 40;

bool is_hex(char c) { return digit_value(c) < 16; }

double from_bits(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

struct Rounded {
  std::uint64_t mantissa;
  bool inexact;
};

// Keeps the top 64 - drop bits of `bits` (followed by `sticky`, whether any
// non-zero bit lies below them), rounded to nearest-even.
Rounded round_off(std::uint64_t bits, int drop, bool sticky) {
  if (drop > 64) return {0, true};
  const std::uint64_t kept = drop == 64 ? 0 : bits >> drop;
  const std::uint64_t rest = drop == 64 ? bits : bits & ((std::uint64_t{1} << drop) - 1);
  const std::uint64_t half = std::uint64_t{1} << (drop - 1);
  const bool up = rest > half || (rest == half && (sticky || (kept & 1)));
  return {kept + (up ? 1 : 0), rest != 0 || sticky};
}

// Reads an optional "p[+-]digits" exponent; leaves `p` before the 'p' when
// no digit follows.
std::int64_t read_binary_exponent(const char*& p, const char* last) {
  if (p == last || lower(*p) != 'p') return 0;
  const char* q = p + 1;
  const bool negative = q != last && *q == '-';
  if (q != last && (*q == '+' || *q == '-')) ++q;
  if (q == last || digit_value(*q) > 9) return 0;
  std::int64_t exponent = 0;
  for (; q != last && digit_value(*q) <= 9; ++q) {
    if (exponent < kExponentLimit) exponent = exponent * 10 + digit_value(*q);
  }
  p = q;
  return negative ? -exponent : exponent;
}

}  // namespace

HexFloat parse_hex_float(const char* p, const char* last) {
  // The value is (bits + a fraction when sticky) * 2^exponent.
  std::uint64_t bits = 0;
  std::int64_t exponent = 0;
  bool sticky = false;
  bool any_digit = false;
  const auto take = [&](char c, int exponent_step_when_full, int exponent_step_when_taken) {
    any_digit = true;
    if (bits >> 60 == 0) {
      bits = bits * 16 + static_cast<std::uint64_t>(digit_value(c));
      exponent += exponent_step_when_taken;
    } else {
      sticky = sticky || c != '0';
      exponent += exponent_step_when_full;
    }
  };
  for (; p != last && is_hex(*p); ++p) take(*p, 4, 0);
  if (p != last && *p == '.') {
    const char* fraction = p + 1;
    if (!any_digit && (fraction == last || !is_hex(*fraction))) return {};
    for (p = fraction; p != last && is_hex(*p); ++p) take(*p, 0, -4);
  }
  if (!any_digit) return {};
  exponent += read_binary_exponent(p, last);
  if (bits == 0) return {0.0, p, false};

  // Normalise to bit 63 set: the value's binary exponent is then exponent + 63.
  const int shift = __builtin_clzll(bits);
  bits <<= shift;
  const std::int64_t top = exponent - shift + 63;

  // Tiny means below DBL_MIN once rounded to 53 bits with no exponent limit.
  const Rounded unbounded = round_off(bits, 64 - kMantissaBits, sticky);
  const std::int64_t unbounded_top = top + (unbounded.mantissa >> kMantissaBits);
  const bool tiny = unbounded_top < kMinExponent;

  if (!tiny) {
    if (unbounded_top > kMaxExponent) return {from_bits(kInfinityBits), p, true};
    const std::uint64_t mantissa = unbounded.mantissa >> (unbounded.mantissa >> kMantissaBits);
    const auto biased = static_cast<std::uint64_t>(unbounded_top - kMinExponent + 1);
    return {from_bits(biased * kExponentOne + (mantissa - kExponentOne)), p, false};
  }
  // Subnormal: fewer bits survive. A carry into bit 52 gives DBL_MIN, whose
  // bit pattern is exactly that carry.
  const std::int64_t drop = 64 - kMantissaBits + (kMinExponent - top);
  const Rounded subnormal = round_off(bits, drop > 65 ? 65 : static_cast<int>(drop), sticky);
  return {from_bits(subnormal.mantissa), p, subnormal.inexact};
}

}  // namespace qorin::detail
