// pow10 and log10 against MPFR over a fixed sequence of arguments: the
// edges (zero, the smallest subnormal, the overflow and underflow bounds,
// whole and tenth exponents, the dBm values people type) and then random
// ones, a fixed seed so that a failure repeats. Usage: decimal_power_sweep
// [count], 1,000,000 random arguments by default. Prints the tally; exits 1
// on any difference.
#include "fuzz/decimal_power_reference.h"

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

namespace {

std::vector<double> edges() {
  std::vector<double> xs = {0.0,     -0.0,    DBL_TRUE_MIN, -DBL_TRUE_MIN, DBL_MIN, DBL_MAX, -DBL_MAX, 1e-300,
                            1e-17,   -1e-17,  1.0,          2.0,           0.5,     10.0,    1e22,     1e23,
                            1.5e-16, 1.0 + DBL_EPSILON,     1.0 - DBL_EPSILON / 2,  std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
  // 10^x: near the overflow bound log10(DBL_MAX) = 308.2547..., the bound
  // of the subnormals (-307.65...), the last non-zero results (-323.6...).
  for (double bound : {308.25471555991675, -307.6526555685888, -323.3062153431158, -323.60724533877976}) {
    double x = bound;
    for (int i = 0; i < 64; ++i) x = std::nextafter(x, -1e300);
    for (int i = 0; i < 128; ++i, x = std::nextafter(x, 1e300)) xs.push_back(x);
  }
  // Whole and tenth exponents, and every whole and tenth dBm from -3300 to 3200.
  for (int k = -3300; k <= 3200; ++k) {
    xs.push_back(k);
    xs.push_back(k * 0.1);
    xs.push_back((k - 30.0) * 0.1);
    xs.push_back((k * 0.1 - 30.0) * 0.1);
  }
  // Every binade for log10, and the values next to the powers of ten.
  for (int e = -1074; e <= 1023; ++e) xs.push_back(std::ldexp(1.0, e));
  for (int k = -323; k <= 308; ++k) {
    const double power = std::strtod(("1e" + std::to_string(k)).c_str(), nullptr);
    xs.push_back(std::nextafter(power, 0.0));
    xs.push_back(std::nextafter(power, 1e308));
  }
  return xs;
}

}  // namespace

int main(int argc, char** argv) {
  const long count = argc > 1 ? std::atol(argv[1]) : 1000000;
  long checked = 0, differences = 0;
  if (!qorin::testing::tables_match_mpfr()) ++differences;
  const auto check = [&](double x) {
    ++checked;
    if (!qorin::testing::matches_mpfr(x, 20)) ++differences;
  };
  for (double x : edges()) check(x);
  std::mt19937_64 random(20261125);
  std::uniform_real_distribution<double> exponent(-325.0, 310.0), dbm(-200.0, 100.0), near_one(-1.0, 1.0);
  for (long i = 0; i < count; ++i) {
    switch (i % 4) {
      case 0: check(exponent(random)); break;                            // 10^x over its range, log10 of x > 0
      case 1: check((dbm(random) - 30.0) * 0.1); break;                  // as dBm are converted
      case 2: check(std::pow(10.0, exponent(random))); break;            // log10 over the doubles
      case 3: check(1.0 + std::ldexp(near_one(random), -static_cast<int>(random() % 53))); break;  // near 1
    }
  }
  std::printf("decimal_power_sweep: %ld arguments (%ld random), %ld differences from MPFR\n", checked, count,
              differences);
  return differences == 0 ? 0 : 1;
}
