// Exact conversions and the errors' details; that exactly the unpaired
// surrogates and the texts utfcpp rejects throw is utf_fuzz's oracle.
#include <qorin/text.h>

#include <gtest/gtest.h>
#include <utf8.h>

#include <cstdint>

namespace {

std::wstring widened(const std::u16string& units) { return std::wstring(units.begin(), units.end()); }

// Each check runs through both unit types: wchar_t is 32-bit on Linux, so
// its fast path is separate code there.
void expect_both_ways(const std::string& utf8, const std::u16string& utf16) {
  EXPECT_EQ(qorin::toUtf16(utf8), utf16) << utf8;
  EXPECT_EQ(qorin::toWString(utf8), widened(utf16)) << utf8;
  EXPECT_EQ(qorin::toKString(utf16), utf8) << utf8;
  EXPECT_EQ(qorin::toKString(widened(utf16)), utf8) << utf8;
}

TEST(Utf, ConvertsBothWaysWithSurrogatePairs) {
  struct Case { std::string utf8; std::u16string utf16; };
  const Case cases[] = {
      {"", u""}, {"abc", {0x61, 0x62, 0x63}}, {std::string("a\0b", 3), {0x61, 0, 0x62}}, {"\x7F", {0x7F}},
      {"\xC2\x80", {0x80}}, {"\xEF\xBF\xBF", {0xFFFF}}, {"\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
      {"\xF0\x90\x80\x80", {0xD800, 0xDC00}}, {"\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF}},
      {"1 \xF0\x9F\x98\x80 \xE2\x82\xAC", {0x31, 0x20, 0xD83D, 0xDE00, 0x20, 0x20AC}},
  };
  for (const Case& c : cases) expect_both_ways(c.utf8, c.utf16);
}

TEST(Utf, MalformedUtf8ThrowsInvalidUtf8NamingTheBadLead) {
  struct Case { const char* text; std::uint8_t octet; };
  const Case cases[] = {
      {"\xC0\xAF", 0xC0}, {"\x80", 0x80}, {"\xE2\x41\x42", 0xE2},  // overlong, a lone trail, a lead then ASCII
      {"abc\xF0\x9F\x98", 0xF0}, {"\xED\xA0\x80", 0xED}, {"\xF4\x90\x80\x80", 0xF4},  // cut off; not code points
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
  // By their base class too, which needs matching type information across
  // the library boundary.
  EXPECT_THROW(qorin::toUtf16("\xC3"), utf8::exception);
}

TEST(Utf, WideUnitsBeyondSixteenBitsAreNotUtf16) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "16-bit wchar_t cannot hold such a unit";
  // utfcpp alone would keep the low 16 bits and turn this into "A".
  EXPECT_THROW(qorin::toKString(std::wstring(1, static_cast<wchar_t>(0x10041))), utf8::invalid_utf16);
}

}  // namespace
