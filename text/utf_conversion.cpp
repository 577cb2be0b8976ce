#include <qorin/text.h>

#include <utf8.h>

#include <cstdint>
#include <cstring>
#include <iterator>

namespace qorin {

namespace {

// Whether every byte is below 0x80; eight bytes per step, since this test
// is all the ASCII fast path costs beyond the copy.
bool is_ascii(const std::string& text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080u;
  const char* p = text.data();
  std::size_t left = text.size();
  std::uint64_t seen = 0;
  for (; left >= sizeof seen; left -= sizeof seen, p += sizeof seen) {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    seen |= word;
  }
  for (; left > 0; --left, ++p) seen |= static_cast<unsigned char>(*p);
  return (seen & kHighBits) == 0;
}

template <class Unit>
bool is_ascii(const std::basic_string<Unit>& text) {
  std::uint32_t seen = 0;
  for (Unit unit : text) seen |= static_cast<std::uint32_t>(unit);
  return seen < 0x80;
}

// utfcpp reports a sequence cut off at the end as not_enough_room and an
// encoded surrogate as invalid_code_point; callers get invalid_utf8 for all
// malformed input, naming the first byte of the bad sequence.
[[noreturn]] void throw_invalid_utf8(const std::string& utf8) {
  throw utf8::invalid_utf8(static_cast<std::uint8_t>(utf8[utf8::find_invalid(utf8)]));
}

template <class WideString>
WideString to_utf16_units(const std::string& utf8) {
  if (is_ascii(utf8)) return WideString(utf8.begin(), utf8.end());
  WideString units;
  units.reserve(utf8.size());  // never more units than bytes
  try {
    utf8::utf8to16(utf8.begin(), utf8.end(), std::back_inserter(units));
  } catch (const utf8::not_enough_room&) {
    throw_invalid_utf8(utf8);
  } catch (const utf8::invalid_code_point&) {
    throw_invalid_utf8(utf8);
  }
  return units;
}

template <class Unit>
std::string from_utf16_units(const std::basic_string<Unit>& units) {
  if (is_ascii(units)) return std::string(units.begin(), units.end());
  if constexpr (sizeof(Unit) > 2) {
    // utfcpp keeps only the low 16 bits of a unit: refuse what is no UTF-16.
    for (Unit unit : units) {
      if (static_cast<std::uint32_t>(unit) > 0xFFFF) throw utf8::invalid_utf16(static_cast<std::uint16_t>(unit));
    }
  }
  std::string utf8;
  utf8.reserve(units.size() * 3);  // a BMP unit needs at most three bytes, a pair four
  utf8::utf16to8(units.begin(), units.end(), std::back_inserter(utf8));
  return utf8;
}

}  // namespace

std::u16string toUtf16(const std::string& utf8) { return to_utf16_units<std::u16string>(utf8); }
std::wstring toWString(const std::string& utf8) { return to_utf16_units<std::wstring>(utf8); }
std::string toKString(const std::u16string& utf16) { return from_utf16_units(utf16); }
std::string toKString(const std::wstring& utf16) { return from_utf16_units(utf16); }

}  // namespace qorin
