// Powers and logarithms of ten that give the same bits on every platform.
// The C runtimes differ: one gives 0.010000000000000002 for 10^-2. These use
// plain IEEE double arithmetic only (no runtime pow, exp or log), so a design
// parameter read on Windows equals the one read on Linux.
#pragma once

namespace qorin::units::detail {

// 10^x. A whole x gives the double nearest to the exact power of ten; any
// other x is computed in double-double arithmetic and rounded once, so the
// result is the nearest double but for the rarest near-ties.
//
// Example: pow10(-2.0) => 0.01    pow10(0.5) => 3.1622776601683795
//          pow10(400.0) => +inf   pow10(-400.0) => 0.0
double pow10(double x);

// log10(x) for a finite x > 0, computed the same way; an exact power of ten
// gives its whole exponent.
//
// Example: log10(1000.0) => 3.0    log10(0.001) => -3.0    log10(2.0) => 0.3010299956639812
double log10(double x);

}  // namespace qorin::units::detail
