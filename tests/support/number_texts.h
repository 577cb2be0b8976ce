// Random texts close to the number grammars, for differential tests against
// the C runtime: most are numbers or nearly numbers (a stray sign, a
// missing exponent digit, trailing text), with hex forms, inf, nan and
// values at the edges of the double range mixed in.
//
// Example:
//   random_number_text(rng) => " -0.000125e-3\n", "0x1.8p-1074", "nan(0x7)", "12abc"
#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace qorin::testing {

std::string random_number_text(std::mt19937_64& rng);

// Any double, NaNs and infinities included, with round and tiny values
// more often than plain random bits would give them.
double random_double(std::mt19937_64& rng);

}  // namespace qorin::testing
