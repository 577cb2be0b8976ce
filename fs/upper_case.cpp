#include "fs/upper_case.h"

#include <algorithm>

namespace qorin::detail {

char16_t upper_case_non_ascii(char16_t unit) {
  const UpperCasePair* end = kUpperCasePairs + kUpperCasePairCount;
  const UpperCasePair* found = std::lower_bound(kUpperCasePairs, end, unit,
                                                [](const UpperCasePair& pair, char16_t u) { return pair.unit < u; });
  return (found != end && found->unit == unit) ? found->upper : unit;
}

}  // namespace qorin::detail
