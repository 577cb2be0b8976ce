// MPFR as the reference for the library's own 10^x and log10(x): both must
// be the correctly rounded double, with MPFR's exponent range narrowed to
// the double's so that subnormal results are rounded as the hardware would.
// Shared by the fuzz target and the sweep. Header-only.
#pragma once

#include "units/decimal_power.h"
#include "units/decimal_power_tables.h"

#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace qorin::testing {

inline std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

// f(x) in MPFR, rounded to a double with the double's subnormals.
template <typename MpfrFunction>
double mpfr_reference(MpfrFunction f, double x) {
  const mpfr_exp_t emin = mpfr_get_emin(), emax = mpfr_get_emax();
  mpfr_set_emin(-1073);  // MPFR's significands are in [1/2, 1): 2^-1074 = 0.5 * 2^-1073
  mpfr_set_emax(1024);
  mpfr_t argument, value;
  mpfr_init2(argument, 53);
  mpfr_init2(value, 53);
  mpfr_set_d(argument, x, MPFR_RNDN);
  const int ternary = f(value, argument, MPFR_RNDN);
  mpfr_subnormalize(value, mpfr_check_range(value, ternary, MPFR_RNDN), MPFR_RNDN);
  const double result = mpfr_get_d(value, MPFR_RNDN);
  mpfr_clears(argument, value, static_cast<mpfr_ptr>(nullptr));
  mpfr_set_emin(emin);
  mpfr_set_emax(emax);
  return result;
}

// The same bits, NaN with NaN.
inline bool same_double(double a, double b) { return bits_of(a) == bits_of(b) || (a != a && b != b); }

// Whether pow10(x) and, for x > 0, log10(x) are MPFR's; prints the first
// `report` differences.
inline bool matches_mpfr(double x, int report = 1) {
  static int reported = 0;
  bool same = true;
  const auto check = [&](const char* name, double ours, double theirs) {
    if (same_double(ours, theirs)) return;
    same = false;
    if (reported++ < report) std::fprintf(stderr, "%s(%a): %a, MPFR %a\n", name, x, ours, theirs);
  };
  check("pow10", units::detail::pow10(x), mpfr_reference(mpfr_exp10, x));
  if (x > 0.0 || x != x) check("log10", units::detail::log10(x), mpfr_reference(mpfr_log10, x));
  return same;
}

// Whether each table entry is the double-double nearest to its exact value.
inline bool tables_match_mpfr() {
  using namespace units::detail::decimal_power_tables;
  mpfr_t exact, hi;
  mpfr_inits2(400, exact, hi, static_cast<mpfr_ptr>(nullptr));
  bool same = true;
  const auto check = [&](const char* name, int i, units::detail::DD entry) {
    // hi nearest to the value, lo nearest to what hi leaves out.
    const double want_hi = mpfr_get_d(exact, MPFR_RNDN);
    mpfr_set_d(hi, want_hi, MPFR_RNDN);
    mpfr_sub(hi, exact, hi, MPFR_RNDN);
    const double want_lo = mpfr_get_d(hi, MPFR_RNDN);
    if (entry.hi != want_hi || entry.lo != want_lo) {
      std::fprintf(stderr, "%s[%d] = {%a, %a}, MPFR {%a, %a}\n", name, i, entry.hi, entry.lo, want_hi, want_lo);
      same = false;
    }
  };
  for (int j = 0; j < 128; ++j) {
    mpfr_set_si(exact, j, MPFR_RNDN);
    mpfr_div_ui(exact, exact, 128, MPFR_RNDN);
    mpfr_exp2(exact, exact, MPFR_RNDN);
    check("kPowersOfTwo", j, kPowersOfTwo[j]);
  }
  for (int i = 0; i < 129; ++i) {
    mpfr_set_d(exact, kReciprocals[i].c, MPFR_RNDN);
    mpfr_log10(exact, exact, MPFR_RNDN);
    mpfr_neg(exact, exact, MPFR_RNDN);
    check("kReciprocals", i, kReciprocals[i].minus_log10_c);
  }
  mpfr_set_ui(exact, 10, MPFR_RNDN);
  mpfr_log(exact, exact, MPFR_RNDN);
  check("kLn10", 0, kLn10);
  mpfr_ui_div(exact, 1, exact, MPFR_RNDN);
  check("kInverseLn10", 0, kInverseLn10);
  // log10(2) in parts: the sum of all three is the nearest to it.
  mpfr_set_ui(exact, 2, MPFR_RNDN);
  mpfr_log10(exact, exact, MPFR_RNDN);
  for (double part : kLog10Of2) mpfr_sub_d(exact, exact, part, MPFR_RNDN);
  mpfr_set_d(hi, kLog10Of2[2], MPFR_RNDN);
  mpfr_div_2ui(hi, hi, 52, MPFR_RNDN);
  if (mpfr_cmpabs(exact, hi) > 0) {
    std::fprintf(stderr, "kLog10Of2 is off by more than half an ulp of its last part\n");
    same = false;
  }
  mpfr_clears(exact, hi, static_cast<mpfr_ptr>(nullptr));
  return same;
}

}  // namespace qorin::testing
