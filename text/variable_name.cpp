#include <qorin/text.h>

#include <fmt/format.h>

#include <iterator>

namespace qorin {

namespace {

constexpr char kMarker[] = "Z_Z";  // a name that does not start with a letter
constexpr std::size_t kMarkerSize = sizeof kMarker - 1;

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool is_alnum(char c) { return is_letter(c) || (c >= '0' && c <= '9'); }

// The value of a lower-case hex digit, or -1: encoders only ever wrote lower case.
int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string encode_to_variable_name(const std::string& name, const std::string& prefix) {
  std::string text = prefix;
  if (name.empty()) return text;
  if (!is_letter(name.front())) text += kMarker;
  for (char c : name) {
    if (is_alnum(c)) {
      text += c;
    } else if (c == '_') {
      text += "__";
    } else {
      // Stored names were written as {fmt} renders a signed char: "_9" for a
      // tab, "_-3d" for 0xC3. Signed explicitly so the form does not depend
      // on the platform's char.
      text += '_';
      fmt::format_to(std::back_inserter(text), "{:x}", static_cast<signed char>(c));
    }
  }
  return text;
}

std::pair<std::string, bool> decode_from_variable_name(const std::string& text, const std::string& prefix) {
  const auto fail = [&text] { return std::make_pair(text, false); };
  if (text.compare(0, prefix.size(), prefix) != 0) return fail();
  std::size_t pos = prefix.size();
  if (text.compare(pos, kMarkerSize, kMarker) == 0) pos += kMarkerSize;
  std::string name;
  while (pos < text.size()) {
    const char c = text[pos];
    if (is_alnum(c)) {
      name += c;
      ++pos;
      continue;
    }
    if (c != '_' || pos + 1 >= text.size()) return fail();
    if (text[pos + 1] == '_') {
      name += '_';
      pos += 2;
      continue;
    }
    if (pos + 2 >= text.size()) return fail();
    const int high = hex_value(text[pos + 1]);
    const int low = hex_value(text[pos + 2]);
    if (high < 0 || low < 0) return fail();
    name += static_cast<char>(high * 16 + low);
    pos += 3;
  }
  return {name, true};
}

}  // namespace qorin
