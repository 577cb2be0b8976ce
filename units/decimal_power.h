// Powers and logarithms of ten that give the same bits on every platform.
// The C runtimes differ: one gives 0.010000000000000002 for 10^-2. These use
// plain IEEE double arithmetic only (no runtime pow, exp or log, no fused
// multiply-add), so a design parameter read on Windows equals the one read
// on Linux.
#pragma once

namespace qorin::units::detail {

// 10^x rounded to the nearest double, subnormal results included. A whole x
// gives the power read from its decimal text; any other x is evaluated to
// within 2^-66 and, where that cannot settle the rounding, to within 2^-98.
// No argument is known for which the second is not enough.
//
// Example: pow10(-2.0) => 0.01    pow10(0.5) => 3.1622776601683795
//          pow10(400.0) => +inf   pow10(-400.0) => 0.0    pow10(NaN) => NaN
double pow10(double x);

// log10(x) rounded to the nearest double, evaluated the same way; an exact
// power of ten gives its whole exponent. log10(0) is -inf, log10(+inf) +inf,
// and a negative x or NaN gives NaN.
//
// Example: log10(1000.0) => 3.0    log10(0.001) => -3.0    log10(2.0) => 0.3010299956639812
double log10(double x);

}  // namespace qorin::units::detail
