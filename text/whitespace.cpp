#include <qorin/text.h>

namespace qorin {

namespace {
// The C locale's isspace set, spelt out so no locale is consulted.
bool is_white(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
}  // namespace

std::string trim_and_remove_extra_internal_whitespace(const std::string& text) {
  std::string result;
  result.reserve(text.size());
  bool pending_blank = false;
  for (char c : text) {
    if (is_white(c)) {
      pending_blank = !result.empty();
      continue;
    }
    if (pending_blank) result += ' ';
    pending_blank = false;
    result += c;
  }
  return result;
}

}  // namespace qorin
