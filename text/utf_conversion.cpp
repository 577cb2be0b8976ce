#include <qorin/text.h>

#include <utf8.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace qorin {

namespace {

// The fast paths read units a 64-bit word at a time in memory order.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "word-at-a-time code assumes little-endian");

// The bits from 0x80 up of every unit that fits in a 64-bit word.
template <class Unit>
constexpr std::uint64_t high_bits_of_each_unit() {
  constexpr unsigned kUnitBits = 8 * sizeof(Unit);
  constexpr std::uint64_t kUnitMask = (std::uint64_t{1} << kUnitBits) - 1;
  std::uint64_t mask = 0;
  for (unsigned shift = 0; shift < 64; shift += kUnitBits) mask |= (kUnitMask & ~std::uint64_t{0x7F}) << shift;
  return mask;
}

// Whether every byte is below 0x80. This test is all the ASCII fast path
// costs beyond the copy itself.
bool is_ascii(const std::string& text) {
  const char* bytes = text.data();
  std::size_t left = text.size();
  std::uint64_t seen = 0;
  for (; left >= sizeof seen; left -= sizeof seen, bytes += sizeof seen) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    seen |= word;
  }
  std::uint64_t tail = 0;
  std::memcpy(&tail, bytes, left);
  return ((seen | tail) & high_bits_of_each_unit<char>()) == 0;
}

// Narrows the units into `out` while testing that all are below 0x80, in one
// pass: the plain element-wise copy is slow enough that a separate test
// pass would show. When false is returned `out` holds garbage.
template <class Unit>
bool narrow_if_ascii(const std::basic_string<Unit>& units, std::string& out) {
  static_assert(sizeof(Unit) == 2 || sizeof(Unit) == 4);
  constexpr std::size_t kPerWord = sizeof(std::uint64_t) / sizeof(Unit);
  constexpr unsigned kGap = 8 * sizeof(Unit) - 8;  // how far unit k's low byte sits above byte k
  const std::size_t size = units.size();
  out.resize(size);
  std::uint64_t seen = 0;
  std::size_t i = 0;
  for (; i + kPerWord <= size; i += kPerWord) {
    std::uint64_t word;
    std::memcpy(&word, units.data() + i, sizeof word);
    seen |= word;
    std::uint64_t packed = 0;
    for (std::size_t k = 0; k < kPerWord; ++k) packed |= (word >> (k * kGap)) & (std::uint64_t{0xFF} << (8 * k));
    std::memcpy(&out[i], &packed, kPerWord);
  }
  std::uint32_t tail = 0;
  for (; i < size; ++i) {
    tail |= static_cast<std::uint32_t>(units[i]);
    out[i] = static_cast<char>(units[i]);
  }
  return (seen & high_bits_of_each_unit<Unit>()) == 0 && tail < 0x80;
}

// utfcpp reports a sequence cut off at the end as not_enough_room and an
// encoded surrogate as invalid_code_point; callers get invalid_utf8 for all
// malformed input, naming the first byte of the bad sequence.
[[noreturn]] void throw_invalid_utf8(const std::string& text) {
  throw utf8::invalid_utf8(static_cast<std::uint8_t>(text[utf8::find_invalid(text)]));
}

template <class WideString>
WideString to_utf16_units(const std::string& text) {
  if (is_ascii(text)) return WideString(text.begin(), text.end());
  WideString units;
  units.reserve(text.size());  // never more units than bytes
  try {
    utf8::utf8to16(text.begin(), text.end(), std::back_inserter(units));
  } catch (const utf8::not_enough_room&) {
    throw_invalid_utf8(text);
  } catch (const utf8::invalid_code_point&) {
    throw_invalid_utf8(text);
  }
  return units;
}

template <class Unit>
std::string from_utf16_units(const std::basic_string<Unit>& units) {
  std::string text;
  if (narrow_if_ascii(units, text)) return text;
  if constexpr (sizeof(Unit) > 2) {
    // utfcpp keeps only the low 16 bits of a unit: refuse what is no UTF-16.
    for (Unit unit : units) {
      if (static_cast<std::uint32_t>(unit) > 0xFFFF) throw utf8::invalid_utf16(static_cast<std::uint16_t>(unit));
    }
  }
  text.clear();
  text.reserve(units.size() * 3);  // a BMP unit needs at most three bytes, a pair four
  utf8::utf16to8(units.begin(), units.end(), std::back_inserter(text));
  return text;
}

}  // namespace

std::u16string toUtf16(const std::string& utf8) { return to_utf16_units<std::u16string>(utf8); }
std::wstring toWString(const std::string& utf8) { return to_utf16_units<std::wstring>(utf8); }
std::string toKString(const std::u16string& utf16) { return from_utf16_units(utf16); }
std::string toKString(const std::wstring& utf16) { return from_utf16_units(utf16); }

}  // namespace qorin
