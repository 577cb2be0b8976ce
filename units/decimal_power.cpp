// Double-double arithmetic (a value as an unevaluated sum hi + lo of two
// doubles, about 106 bits) with Dekker's exact products: no fused
// multiply-add, so the x86-64 baseline on both platforms computes the same.
#include "units/decimal_power.h"

#include <qorin/text.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace qorin::units::detail {

namespace {

struct DD {
  double hi;
  double lo;
};

DD two_sum(double a, double b) {
  const double s = a + b;
  const double v = s - a;
  return {s, (a - (s - v)) + (b - v)};
}

DD quick_two_sum(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

DD two_prod(double a, double b) {
  constexpr double kSplit = 134217729.0;  // 2^27 + 1
  const double p = a * b;
  const double ca = kSplit * a, cb = kSplit * b;
  const double ahi = ca - (ca - a), alo = a - ahi;
  const double bhi = cb - (cb - b), blo = b - bhi;
  return {p, ((ahi * bhi - p) + ahi * blo + alo * bhi) + alo * blo};
}

DD add(DD a, DD b) {
  DD s = two_sum(a.hi, b.hi);
  s.lo += a.lo + b.lo;
  return quick_two_sum(s.hi, s.lo);
}

DD mul(DD a, DD b) {
  DD p = two_prod(a.hi, b.hi);
  p.lo += a.hi * b.lo + a.lo * b.hi;
  return quick_two_sum(p.hi, p.lo);
}

DD mul(DD a, double b) { return mul(a, DD{b, 0.0}); }

// ln 2, log2 10 and ln 10 to double-double precision.
constexpr DD kLn2 = {0.6931471805599453, 2.3190468138462996e-17};
constexpr DD kLog2Of10 = {3.321928094887362, 1.661617516973592e-16};
constexpr DD kLn10 = {2.302585092994046, -2.1707562233822494e-16};

// a / n, with the remainder carried: 1/n itself is rarely exact.
DD div(DD a, double n) {
  const double q1 = a.hi / n;
  const DD r = add(a, mul(DD{n, 0.0}, -q1));
  return quick_two_sum(q1, (r.hi + r.lo) / n);
}

// e^y for |y| <= 0.35, by its Taylor series in Horner form,
// 1 + y/1 (1 + y/2 (1 + ...)): 27 terms reach 1e-33.
DD exp_small(DD y) {
  DD sum = {1.0, 0.0};
  for (int n = 27; n >= 1; --n) sum = add(DD{1.0, 0.0}, div(mul(y, sum), n));
  return sum;
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

// ln(m) for m in [1, 2): a plain double first guess from the series of
// 2 atanh((m - 1) / (m + 1)), then one Newton step y + m e^-y - 1 in
// double-double, which squares the guess's error away.
DD log_mantissa(double m) {
  const double s = (m - 1.0) / (m + 1.0);
  const double s2 = s * s;
  double guess = 0.0;
  for (int n = 41; n >= 1; n -= 2) guess = 1.0 / n + s2 * guess;
  guess *= 2.0 * s;
  // |guess| < 0.7: e^-guess is the square of e^(-guess/2).
  DD e = exp_small(DD{-guess * 0.5, 0.0});
  e = mul(e, e);
  const DD residual = add(mul(e, m), DD{-1.0, 0.0});  // m e^-guess - 1
  return add(DD{guess, 0.0}, residual);
}

}  // namespace

double pow10(double x) {
  if (std::isnan(x)) return x;
  if (x > 309.0) return std::numeric_limits<double>::infinity();
  if (x < -344.0) return 0.0;
  const double whole = std::nearbyint(x);
  if (whole == x && x >= -323.0 && x <= 308.0) return powers_of_ten()[static_cast<std::size_t>(whole + 323.0)];
  // 10^x = 2^m * 2^g with m whole and |g| <= 1/2; 2^g = e^(g ln 2).
  const DD t = add(two_prod(x, kLog2Of10.hi), DD{x * kLog2Of10.lo, 0.0});
  const double m = std::nearbyint(t.hi);
  const DD g = add(DD{t.hi - m, 0.0}, DD{t.lo, 0.0});
  const DD power = exp_small(mul(g, kLn2));
  return std::ldexp(power.hi + power.lo, static_cast<int>(m));
}

double log10(double x) {
  int exponent = 0;
  const double m = 2.0 * std::frexp(x, &exponent);  // x = m 2^(exponent - 1), m in [1, 2)
  const DD ln = add(mul(kLn2, static_cast<double>(exponent - 1)), log_mantissa(m));
  // ln / ln 10, by one division and one correction step.
  const double q = ln.hi / kLn10.hi;
  const DD r = add(ln, mul(kLn10, -q));
  const double correction = (r.hi + r.lo) / kLn10.hi;
  const DD result = quick_two_sum(q, correction);
  return result.hi;
}

}  // namespace qorin::units::detail
