// ParamQDXFileBasedValue: takes «file{dataset, value}» apart.
#include <qorin/parser.h>

namespace qorin::parser {

ParamQDXFileBasedValue::ParamQDXFileBasedValue(const ParserValue& value) {
  std::string text = value.value();
  std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return;
  text = text.substr(first, text.find_last_not_of(' ') + 1 - first);

  static const std::string kPrefix = "file{";
  if (text.compare(0, kPrefix.size(), kPrefix) != 0) return;
  std::size_t comma = text.find(',', kPrefix.size());
  if (comma == std::string::npos) return;
  std::size_t value_begin = text.find_first_not_of(' ', comma + 1);
  if (value_begin == std::string::npos) return;
  std::size_t close = text.find('}', value_begin);
  if (close != text.size() - 1) return;

  // Blanks inside the braces belong to the names: «file{ds1 , 3 }» keeps them.
  dac_ = text.substr(kPrefix.size(), comma - kPrefix.size());
  value_ = text.substr(value_begin, close - value_begin);
  if (value.units().is_valid()) units_ = value.units().unit_name();
  valid_ = true;
}

}  // namespace qorin::parser
