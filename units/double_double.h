// Double-double arithmetic: a value as the unevaluated sum hi + lo of two
// doubles, about 106 bits. Products are split by Dekker's method, never
// fused: the x86-64 baseline both platforms build for has no FMA, and a
// contracted a * b + c would give other bits than the same line elsewhere,
// so the files that include this are built with -ffp-contract=off.
//
// Example: two_prod(0.1, 0.1) => {0.010000000000000002, -1.8215099901700577e-19},
//          the exact product of the two doubles.
#pragma once

namespace qorin::units::detail {

struct DD {
  double hi;
  double lo;
};

// a + b exactly, for any a and b.
inline DD two_sum(double a, double b) {
  const double s = a + b;
  const double v = s - a;
  return {s, (a - (s - v)) + (b - v)};
}

// a + b exactly, when |a| >= |b| or a is zero.
inline DD quick_two_sum(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

// a * b exactly (barring overflow and underflow).
inline DD two_prod(double a, double b) {
  constexpr double kSplit = 134217729.0;  // 2^27 + 1
  const double p = a * b;
  const double ca = kSplit * a, cb = kSplit * b;
  const double ahi = ca - (ca - a), alo = a - ahi;
  const double bhi = cb - (cb - b), blo = b - bhi;
  return {p, ((ahi * bhi - p) + ahi * blo + alo * bhi) + alo * blo};
}

inline DD add(DD a, DD b) {
  DD s = two_sum(a.hi, b.hi);
  s.lo += a.lo + b.lo;
  return quick_two_sum(s.hi, s.lo);
}

inline DD mul(DD a, DD b) {
  DD p = two_prod(a.hi, b.hi);
  p.lo += a.hi * b.lo + a.lo * b.hi;
  return quick_two_sum(p.hi, p.lo);
}

// a / n for a small whole n, with the remainder carried: 1/n is rarely exact.
inline DD div(DD a, double n) {
  const double q1 = a.hi / n;
  const DD r = add(a, two_prod(n, -q1));
  return quick_two_sum(q1, (r.hi + r.lo) / n);
}

}  // namespace qorin::units::detail
