#include <qorin/text.h>

namespace qorin {

std::vector<std::string> tokenize(const std::string& text, const std::string& delimiters, bool keep_empty) {
  std::vector<std::string> tokens;
  std::string::size_type start = 0;
  for (;;) {
    // An empty delimiter set finds nothing, so the whole text is one token.
    const std::string::size_type found =
        delimiters.empty() ? std::string::npos : text.find_first_of(delimiters, start);
    const std::string::size_type end = found == std::string::npos ? text.size() : found;
    if (keep_empty || end > start) tokens.push_back(text.substr(start, end - start));
    if (found == std::string::npos) return tokens;
    start = found + 1;
  }
}

}  // namespace qorin
