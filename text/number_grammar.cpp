#include <qorin/text.h>

#include "text/number_scanner.h"

namespace qorin {

bool isValidNumber(const std::string& text) {
  return detail::scan_number(text.data(), text.data() + text.size()).valid;
}

bool isValidInt(const std::string& text) {
  const detail::NumberScan scan = detail::scan_number(text.data(), text.data() + text.size());
  return scan.valid && scan.integral;
}

}  // namespace qorin
