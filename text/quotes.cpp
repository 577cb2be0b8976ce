#include <qorin/text.h>

namespace qorin {

bool isQuoted(const std::string& text) {
  return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

std::string stripQuotes(const std::string& text) {
  return isQuoted(text) ? text.substr(1, text.size() - 2) : text;
}

std::string addQuotes(const std::string& text) { return '"' + text + '"'; }

}  // namespace qorin
