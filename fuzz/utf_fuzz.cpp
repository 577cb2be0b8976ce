// UTF-8 -> UTF-16 -> UTF-8 gives the input back exactly when utfcpp's own
// validator accepts it, and throws utf8::invalid_utf8 otherwise. The same
// bytes read as UTF-16 units convert, and back, exactly when every surrogate
// is paired.
#include <qorin/text.h>

#include <utf8.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void check_utf8(const std::string& text) {
  const bool valid = utf8::is_valid(text.begin(), text.end());
  try {
    const std::u16string units = qorin::toUtf16(text);
    if (!valid || qorin::toKString(units) != text) std::abort();
    if (qorin::toKString(qorin::toWString(text)) != text) std::abort();
  } catch (const utf8::invalid_utf8&) {
    if (valid) std::abort();
  }
}

bool is_lead(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool is_trail(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

bool surrogates_paired(const std::u16string& units) {
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (is_trail(units[i])) return false;
    if (is_lead(units[i]) && (++i == units.size() || !is_trail(units[i]))) return false;
  }
  return true;
}

void check_utf16(const std::u16string& units) {
  const bool valid = surrogates_paired(units);
  try {
    const std::string text = qorin::toKString(units);
    if (!valid || qorin::toUtf16(text) != units) std::abort();
    if (qorin::toKString(std::wstring(units.begin(), units.end())) != text) std::abort();
  } catch (const utf8::invalid_utf16&) {
    if (valid) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  check_utf8(std::string(reinterpret_cast<const char*>(data), size));
  std::u16string units(size / 2, u'\0');
  std::memcpy(units.data(), data, units.size() * 2);
  check_utf16(units);
  return 0;
}
