#include <qorin/text.h>

#include "text/number_scanner.h"

#include <algorithm>

namespace qorin {

// Flattened as the conversions are: the parser asks this of every value.
[[gnu::flatten]] bool isValidNumber(const std::string& text) {
  return detail::scan_number(text.data(), text.data() + text.size()).valid;
}

bool isValidInt(const std::string& text) {
  const detail::NumberScan scan = detail::scan_number(text.data(), text.data() + text.size());
  return scan.valid && std::all_of(scan.body_begin, scan.body_end, detail::is_digit);
}

}  // namespace qorin
