// pow10 and log10 against MPFR, bit for bit. Each 8 bytes of input give
// three arguments: the bytes as a double (log10 of its magnitude covers every
// binade, subnormals included), and their fraction spread over the range
// where 10^x is finite and non-zero, plain and as a dBm value is turned into
// an exponent. The tables are checked once, at start.
#include "fuzz/decimal_power_reference.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  if (!qorin::testing::tables_match_mpfr()) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (std::size_t offset = 0; offset + 8 <= size; offset += 8) {
    std::uint64_t bits;
    std::memcpy(&bits, data + offset, sizeof bits);
    double raw;
    std::memcpy(&raw, &bits, sizeof raw);
    const double fraction = static_cast<double>(bits >> 11) * 0x1p-53;  // [0, 1)
    const double dbm = -3300.0 + fraction * 6500.0;
    const double arguments[] = {raw, std::fabs(raw), -325.0 + fraction * 635.0, (dbm - 30.0) * 0.1};
    for (double x : arguments) {
      if (!qorin::testing::matches_mpfr(x)) std::abort();
    }
  }
  return 0;
}
