#include <qorin/text.h>

#include <cstdint>

namespace qorin {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Folds A-Z only and compares as signed bytes, so UTF-8 lead bytes order
// before every ASCII character on every platform.
std::int8_t folded(char c) {
  if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return static_cast<std::int8_t>(c);
}

// Reads the digit run at `pos` as a 32-bit signed int that wraps around,
// as the names were always ordered; unsigned arithmetic keeps the wrap
// defined.
std::int32_t read_number(const std::string& text, std::size_t& pos) {
  std::uint32_t value = 0;
  while (pos < text.size() && is_digit(text[pos])) {
    value = value * 10u + static_cast<std::uint32_t>(text[pos] - '0');
    ++pos;
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace

bool CompareStringNumberAwareIgnoreCase::operator()(const std::string& a, const std::string& b) const {
  if (a.empty()) return !b.empty();
  std::size_t i = 0;
  std::size_t j = 0;
  while (j < b.size()) {
    if (is_digit(a[i]) && is_digit(b[j])) {
      const std::int32_t na = read_number(a, i);
      const std::int32_t nb = read_number(b, j);
      if (na != nb) return na < nb;
    }
    // After a number either side may be at its end; the end compares as 0.
    const std::int8_t ca = i < a.size() ? folded(a[i]) : 0;
    const std::int8_t cb = j < b.size() ? folded(b[j]) : 0;
    if (ca != cb) return ca < cb;
    ++i;
    ++j;
    if (i >= a.size()) return j < b.size();
  }
  return false;
}

}  // namespace qorin
