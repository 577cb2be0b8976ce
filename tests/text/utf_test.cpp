#include <qorin/text.h>

#include <gtest/gtest.h>
#include <utf8.h>

#include <cstdint>

namespace {

std::wstring widened(const std::u16string& units) { return std::wstring(units.begin(), units.end()); }

struct Valid { std::string utf8; std::u16string utf16; };
const Valid kValid[] = {
    {"", u""},
    {"abc", {0x61, 0x62, 0x63}},
    {std::string("a\0b", 3), {0x61, 0, 0x62}},
    {"\x7F", {0x7F}},
    {"\xC2\x80", {0x80}},
    {"x\xC3\xA9y", {0x78, 0xE9, 0x79}},
    {"\xE2\x82\xAC", {0x20AC}},
    {"\xEF\xBF\xBF", {0xFFFF}},
    {"\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
    {"\xF0\x90\x80\x80", {0xD800, 0xDC00}},
    {"\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF}},
    {"1 \xF0\x9F\x98\x80 \xE2\x82\xAC", {0x31, 0x20, 0xD83D, 0xDE00, 0x20, 0x20AC}},
};

TEST(Utf, ConvertsBothWaysWithSurrogatePairs) {
  for (const Valid& c : kValid) {
    EXPECT_EQ(qorin::toUtf16(c.utf8), c.utf16) << c.utf8;
    // Wide strings hold the same UTF-16 units on every platform.
    EXPECT_EQ(qorin::toWString(c.utf8), widened(c.utf16)) << c.utf8;
    EXPECT_EQ(qorin::toKString(c.utf16), c.utf8) << c.utf8;
    EXPECT_EQ(qorin::toKString(widened(c.utf16)), c.utf8) << c.utf8;
  }
}

// The ASCII test runs a word at a time: one non-ASCII character anywhere,
// in a full word or in the tail, must leave the fast path.
TEST(Utf, OneNonAsciiCharacterAtAnyPositionIsConverted) {
  for (std::size_t size = 1; size <= 19; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      std::u16string units(size, u'a');
      units[at] = 0xE9;
      std::string text(size - 1, 'a');
      text.insert(at, "\xC3\xA9");
      ASSERT_EQ(qorin::toUtf16(text), units) << size << " / " << at;
      ASSERT_EQ(qorin::toWString(text), widened(units)) << size << " / " << at;
      ASSERT_EQ(qorin::toKString(units), text) << size << " / " << at;
      ASSERT_EQ(qorin::toKString(widened(units)), text) << size << " / " << at;
    }
  }
}

TEST(Utf, UnpairedSurrogatesThrowInvalidUtf16) {
  const std::u16string cases[] = {
      {0xDE00},                // trail without a lead
      {0x41, 0xDE00, 0x42},
      {0xD83D},                // lead at the end
      {0x41, 0xD83D},
      {0xD83D, 0x41},          // lead followed by a non-trail
      {0xD83D, 0xD83D, 0xDE00},
      {0xDE00, 0xD83D},        // pair in the wrong order
  };
  for (const std::u16string& units : cases) {
    try {
      qorin::toKString(units);
      ADD_FAILURE() << "no exception for unit " << units[0];
    } catch (const utf8::invalid_utf16& e) {
      EXPECT_STREQ(e.what(), "Invalid UTF-16");
    }
    EXPECT_THROW(qorin::toKString(widened(units)), utf8::invalid_utf16);
  }
}

TEST(Utf, MalformedUtf8ThrowsInvalidUtf8) {
  struct Case { const char* text; std::uint8_t octet; };
  const Case cases[] = {
      {"\xC0\xAF", 0xC0},              // overlong '/'
      {"\xE0\x80\xAF", 0xE0},          // overlong, three bytes
      {"\xF0\x80\x80\xAF", 0xF0},      // overlong, four bytes
      {"\xE2\x82", 0xE2},              // cut off at the end
      {"abc\xF0\x9F\x98", 0xF0},
      {"\x80", 0x80},                  // trail without a lead
      {"\xFF", 0xFF},                  // never a lead
      {"\xE2\x41\x42", 0xE2},          // lead followed by ASCII
      {"\xED\xA0\x80", 0xED},          // an encoded surrogate
      {"\xF4\x90\x80\x80", 0xF4},      // above U+10FFFF
  };
  for (const Case& c : cases) {
    try {
      qorin::toUtf16(c.text);
      ADD_FAILURE() << "no exception for " << c.text;
    } catch (const utf8::invalid_utf8& e) {
      EXPECT_STREQ(e.what(), "Invalid UTF-8");
      EXPECT_EQ(e.utf8_octet(), c.octet) << c.text;
    }
    EXPECT_THROW(qorin::toWString(c.text), utf8::invalid_utf8) << c.text;
  }
}

// The exception types are utfcpp's own: a caller can catch them by their base
// class too, which needs matching type information across the library boundary.
TEST(Utf, ExceptionsAreCatchableByBaseClass) {
  EXPECT_THROW(qorin::toUtf16("\xC3"), utf8::exception);
  EXPECT_THROW(qorin::toKString(std::u16string{0xD800}), std::exception);
}

TEST(Utf, WideUnitsBeyondSixteenBitsAreNotUtf16) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "16-bit wchar_t cannot hold such a unit";
  // utfcpp alone would keep the low 16 bits and turn this into "A".
  const std::wstring units(1, static_cast<wchar_t>(0x10041));
  EXPECT_THROW(qorin::toKString(units), utf8::invalid_utf16);
}

}  // namespace
