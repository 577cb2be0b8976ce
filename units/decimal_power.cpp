// 10^x and log10(x) with a table and a short series: the argument is split
// into a table entry and a small remainder, the remainder's series is summed
// with its leading products exact, and the result is rounded once, to the
// precision of the result (subnormals included). When the error bound of
// that fast evaluation leaves the rounding in doubt, the same split is
// evaluated again in double-double throughout. Only IEEE additions,
// multiplications and divisions, so both platforms compute the same bits.
#include "units/decimal_power.h"

#include "units/decimal_power_tables.h"
#include "units/double_double.h"

#include <qorin/text.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace qorin::units::detail {

namespace {

using namespace decimal_power_tables;

// Relative error bounds of the two evaluations. The worst errors seen against
// MPFR are 2^-68.8 and 2^-104.1, a margin of 7 and 60; about one argument in
// 3,000 is left in doubt by the fast bound.
constexpr double kFastError = 0x1p-66;
constexpr double kCarefulError = 0x1p-98;

constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63;
constexpr std::uint64_t kFractionMask = (std::uint64_t{1} << 52) - 1;
constexpr std::uint64_t kInfinityBits = std::uint64_t{0x7FF} << 52;

std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

double from_bits(std::uint64_t bits) {
  double x;
  std::memcpy(&x, &bits, sizeof x);
  return x;
}

// 2^n for a normal power.
double power_of_two(int n) { return from_bits(static_cast<std::uint64_t>(n + 1023) << 52); }

// x rounded to the nearest whole number, for |x| < 2^51: adding 1.5 * 2^52
// leaves no fraction bits.
double round_to_whole(double x) {
  constexpr double kShifter = 0x1.8p52;
  return (x + kShifter) - kShifter;
}

// Sets *result to (y.hi + y.lo) 2^scale rounded to the nearest double, with
// the precision the result has there (fewer bits for a subnormal; +inf past
// the largest double). True when every value within error * |y| of y rounds
// to the same double, so that the exact value, which is that close, does too.
// y.hi must be normal or zero, and y.hi the double nearest to y.hi + y.lo.
bool round_scaled(DD y, int scale, double error, double* result) {
  if (y.hi == 0.0) {
    *result = 0.0;
    return true;
  }
  const std::uint64_t sign = bits_of(y.hi) & kSignBit;
  const std::uint64_t hi_bits = bits_of(y.hi) & ~kSignBit;
  const double lo = sign ? -y.lo : y.lo;
  // |y| 2^scale = (mantissa + lo_ulps) 2^lsb, lo_ulps in [-1/2, 1/2]
  // (in [-1/4, 1/2] when y.hi is a power of two).
  const int hi_exponent = static_cast<int>(hi_bits >> 52);
  const std::uint64_t mantissa = (hi_bits & kFractionMask) | (std::uint64_t{1} << 52);
  const int lsb = hi_exponent - 1075 + scale;
  const double lo_ulps = lo * power_of_two(1075 - hi_exponent);
  // Below the normal range the last kept bit is 2^-1074.
  const int shift = lsb < -1074 ? -1074 - lsb : 0;
  if (shift > 54) {  // below a quarter of the smallest subnormal
    *result = from_bits(sign);
    return true;
  }
  const std::uint64_t kept = mantissa >> shift;
  // What the kept bits leave out, in units of the result's last place: in
  // [-1/2, 1), to within 2^-53. Only above a midpoint does it round up.
  const double dropped = (static_cast<double>(mantissa - (kept << shift)) + lo_ulps) * power_of_two(-shift);
  std::uint64_t bits = (static_cast<std::uint64_t>(lsb + shift + 1074) << 52) + kept + (dropped > 0.5 ? 1 : 0);
  if (bits > kInfinityBits) bits = kInfinityBits;
  *result = from_bits(sign | bits);
  // Below a power of two the doubles lie twice as close.
  const double lower_midpoint = shift == 0 && mantissa == std::uint64_t{1} << 52 ? -0.25 : -0.5;
  const double distance_to_midpoint = dropped >= 0.0 ? dropped - 0.5 : dropped - lower_midpoint;
  const double error_ulps = error * power_of_two(53 - shift) + 0x1p-52;
  return distance_to_midpoint > error_ulps || distance_to_midpoint < -error_ulps;
}

// x = (k / 128) log10(2) + r with k whole and |r| <= log10(2) / 256; what
// pow10 goes on with is k and z = r ln 10.
struct ReducedExponent {
  int steps;  // k
  DD z;
};

ReducedExponent reduce_exponent(double x) {
  const double k = round_to_whole(x * kStepsPerUnit);
  // |k| < 2^18: k times each 35-bit part is exact, and unless k is 0, x and
  // k A / 128 are within a factor of two of each other, so their difference
  // is exact too.
  const double a = x - k * (kLog10Of2[0] * 0x1p-7);
  const DD b = two_sum(a, -k * (kLog10Of2[1] * 0x1p-7));
  const DD r = {b.hi, b.lo - k * (kLog10Of2[2] * 0x1p-7)};
  DD z = two_prod(r.hi, kLn10.hi);
  z.lo += r.hi * kLn10.lo + r.lo * kLn10.hi;
  return {static_cast<int>(k), quick_two_sum(z.hi, z.lo)};
}

// t e^z for |z| <= 0.0028: t.hi (1 + z.hi) exactly, the rest of the series
// (from z^2 / 2, at most 2^-18, to z^7 / 7!) in plain doubles.
DD scaled_exp_fast(DD t, DD z) {
  const double zh = z.hi;
  const double tail = zh * zh *
                      (0.5 + zh * (1.0 / 6 + zh * (1.0 / 24 + zh * (1.0 / 120 + zh * (1.0 / 720 + zh * (1.0 / 5040))))));
  const DD linear = two_prod(t.hi, zh);
  DD sum = two_sum(t.hi, linear.hi);
  sum.lo += linear.lo + t.hi * (z.lo + tail) + t.lo * (1.0 + zh);
  return quick_two_sum(sum.hi, sum.lo);
}

// e^z for |z| <= 0.0028, in double-double throughout: the Taylor series in
// Horner form, 1 + z/1 (1 + z/2 (1 + ...)); 11 terms reach 2^-118.
DD exp_careful(DD z) {
  DD sum = {1.0, 0.0};
  for (int n = 11; n >= 1; --n) sum = add(DD{1.0, 0.0}, div(mul(z, sum), n));
  return sum;
}

// log10(1 + r) for |r| < 2^-7.9: ln(1 + r) = r - r^2/2 + ... with r^2
// exact and the terms from r^3 / 3 (at most 2^-25) in plain doubles.
DD log10_1p_fast(DD r) {
  const double rh = r.hi;
  const DD square = two_prod(rh, rh);
  const double cubic =
      rh * square.hi *
      (1.0 / 3 - rh * (0.25 - rh * (0.2 - rh * (1.0 / 6 - rh * (1.0 / 7 - rh * (0.125 - rh * (1.0 / 9)))))));
  const DD lead = two_sum(rh, -0.5 * square.hi);
  const double rest = lead.lo + r.lo - (0.5 * square.lo + rh * r.lo) + cubic;
  DD product = two_prod(lead.hi, kInverseLn10.hi);
  product.lo += lead.hi * kInverseLn10.lo + rest * kInverseLn10.hi;
  return product;  // not normalised: only ever added to
}

// log10(1 + r) for |r| < 2^-7.9 in double-double throughout: r (1 - r (1/2 -
// r (1/3 - ...))) over 15 terms (2^-118), times 1 / ln 10.
DD log10_1p_careful(DD r) {
  const DD minus_r = {-r.hi, -r.lo};
  DD sum = {0.0, 0.0};
  for (int n = 15; n >= 1; --n) sum = add(div(DD{1.0, 0.0}, n), mul(minus_r, sum));
  return mul(mul(r, sum), kInverseLn10);
}

// The double nearest to 10^k, for the k whose power is a normal or
// subnormal double, read with the library's correctly rounded number reader.
const std::array<double, 632>& powers_of_ten() {
  static const std::array<double, 632> table = [] {
    std::array<double, 632> powers{};
    for (int k = -323; k <= 308; ++k) powers[static_cast<std::size_t>(k + 323)] = toDouble_nothrow("1e" + std::to_string(k));
    return powers;
  }();
  return table;
}

}  // namespace

double pow10(double x) {
  if (!(x > -324.0)) return x != x ? x : 0.0;  // 10^-324 is below half the smallest subnormal
  if (x >= 309.0) return std::numeric_limits<double>::infinity();
  const double whole = round_to_whole(x);
  if (whole == x) return powers_of_ten()[static_cast<std::size_t>(whole + 323.0)];
  // 10^x = 2^(k / 128) e^z = 2^floor(k / 128) 2^(j / 128) e^z.
  const ReducedExponent reduced = reduce_exponent(x);
  const int j = reduced.steps & 127;
  const int scale = (reduced.steps - j) / 128;
  const DD& t = kPowersOfTwo[j];
  double result;
  if (!round_scaled(scaled_exp_fast(t, reduced.z), scale, kFastError, &result)) {
    round_scaled(mul(t, exp_careful(reduced.z)), scale, kCarefulError, &result);
  }
  return result;
}

double log10(double x) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (x == 0.0) return -kInfinity;
  if (x < 0.0) return std::numeric_limits<double>::quiet_NaN();
  if (x != x || x == kInfinity) return x;
  std::uint64_t bits = bits_of(x);
  int exponent = static_cast<int>(bits >> 52) - 1023;
  if (exponent == -1023) {  // subnormal: bring it into the normal range first
    bits = bits_of(x * 0x1p54);
    exponent = static_cast<int>(bits >> 52) - 1023 - 54;
  }
  // x = 2^exponent m; near 1 + index/128 from the top eight fraction bits.
  const std::uint64_t fraction = bits & kFractionMask;
  const std::size_t index = static_cast<std::size_t>(((fraction >> 44) + 1) >> 1);
  double m = from_bits(fraction | (std::uint64_t{1023} << 52));
  // From sqrt(2) on m is halved, so that an x just below 1 is 2^0 m, not
  // 2^-1 2m, and nothing cancels in the sum below.
  if (index >= 53) {
    m *= 0.5;
    ++exponent;
  }
  const Reciprocal& reciprocal = kReciprocals[index];
  // r = m c - 1 exactly. c has 14 significant bits: with m cut into its top
  // 39 bits and the rest, both products are exact, and the first is within
  // 2^-7 of 1, so taking 1 away is exact too.
  const double m_top = from_bits(bits_of(m) & ~std::uint64_t{0x3FFF});
  const DD r = two_sum(m_top * reciprocal.c - 1.0, (m - m_top) * reciprocal.c);
  // log10(x) = exponent log10(2) - log10(c) + log10(1 + r); the exponent
  // times each of the 35-bit parts is exact.
  const double e = exponent;
  DD base = quick_two_sum(e * kLog10Of2[0], e * kLog10Of2[1]);
  base.lo += e * kLog10Of2[2];
  base = add(base, reciprocal.minus_log10_c);
  double result;
  if (!round_scaled(add(base, log10_1p_fast(r)), 0, kFastError, &result)) {
    round_scaled(add(base, log10_1p_careful(r)), 0, kCarefulError, &result);
  }
  return result;
}

}  // namespace qorin::units::detail
