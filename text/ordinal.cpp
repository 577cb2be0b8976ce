#include <qorin/text.h>

namespace qorin {

std::string convert_number_to_ordinal(int n) {
  std::string text = std::to_string(n);
  const std::string::size_type size = text.size();
  const char last = text[size - 1];
  const bool teen = size >= 2 && text[size - 2] == '1' && last >= '1' && last <= '3';
  if (teen) return text + "th";
  switch (last) {
    case '1': return text + "st";
    case '2': return text + "nd";
    case '3': return text + "rd";
    default: return text + "th";
  }
}

}  // namespace qorin
