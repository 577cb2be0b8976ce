#include <qorin/text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>

namespace {

using Tokens = std::vector<std::string>;

TEST(Tokenize, EachDelimiterByteEndsOneToken) {
  struct Case { const char* text; const char* delimiters; bool keep_empty; Tokens expected; };
  const Case cases[] = {
      {"a b  c", " ", false, {"a", "b", "c"}}, {"a b  c", " ", true, {"a", "b", "", "c"}}, {"a,", ",", true, {"a", ""}},
      {"", ",", true, {""}},   {"", ",", false, {}},   {"abc", "", true, {"abc"}},
      {"a;b,c", ",;", true, {"a", "b", "c"}}, {"a,;b", ",;", true, {"a", "", "b"}},  // a set, not a sequence
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::tokenize(c.text, c.delimiters, c.keep_empty), c.expected) << c.text << " / " << c.keep_empty;
  }
}

TEST(Whitespace, TrimsAndCollapsesTheSixAsciiBlanks) {
  struct Case { const char* text; const char* expected; };
  const Case cases[] = {{"  a \t\n b  ", "a b"}, {"\t", ""}, {"a\tb", "a b"}, {"a\v\f\rb", "a b"}, {" a  b  c ", "a b c"},
                        {"a\xA0" "b", "a\xA0" "b"}};  // a no-break space byte is not white space
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::trim_and_remove_extra_internal_whitespace(c.text), c.expected) << c.text;
  }
}

TEST(Quotes, OnlyOneLevelOfDoubleQuotes) {
  struct Case { const char* text; bool quoted; const char* stripped; const char* added; };
  const Case cases[] = {{"\"", false, "\"", "\"\"\""},  {"\"\"", true, "", "\"\"\"\""},
                        {"\"\"x\"\"", true, "\"x\"", "\"\"\"x\"\"\""}, {"'a'", false, "'a'", "\"'a'\""},
                        {"", false, "", "\"\""}};
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::isQuoted(c.text), c.quoted) << c.text;
    EXPECT_EQ(qorin::stripQuotes(c.text), c.stripped) << c.text;
    EXPECT_EQ(qorin::addQuotes(c.text), c.added) << c.text;
  }
}

TEST(Ordinal, TeensAndSigns) {
  struct Case { int n; const char* expected; };
  const Case cases[] = {{1, "1st"},   {2, "2nd"},     {3, "3rd"},     {4, "4th"},     {0, "0th"},
                        {11, "11th"}, {12, "12th"},   {13, "13th"},   {21, "21st"},   {111, "111th"},
                        {112, "112th"}, {101, "101st"}, {-1, "-1st"}, {-12, "-12th"}, {INT_MIN, "-2147483648th"}};
  for (const Case& c : cases) EXPECT_EQ(qorin::convert_number_to_ordinal(c.n), c.expected) << c.n;
}

TEST(NaturalOrder, LessThanTable) {
  struct Case { std::string a, b; bool less; };
  const Case cases[] = {
      {"a2", "a10", true}, {"a10", "a2", false}, {"B", "a", false}, {"", "x", true}, {"x", "", false},
      {"", "", false},     {"abc", "abcd", true}, {"abc", "abc", false},
      // Equivalent both ways: case, leading zeros, and the byte after equal
      // numbers compared and consumed together.
      {"File2", "file2", false}, {"file2", "File2", false}, {"a007", "a7", false}, {"a7", "a007", false},
      {"x1y", "x01y", false},    {"x01y", "x1y", false},
      // Letters fold before comparing: '_' (0x5F) sorts before 'B' as 'b'.
      {"_", "B", true}, {"B", "_", false},
      // Signed bytes: UTF-8 sorts before every ASCII byte, digits included;
      // the end after a number compares as 0, above a negative byte.
      {"\xC3\xA9", "a", true}, {"\xC3\xA9", "0", true}, {"a", "\xC3\xA9", false}, {"x1\xC3", "x1", true},
      {"x1", "x1\xC3", false},
      // Digit runs wrap as 32-bit signed ints: to -2147483648, 0 and 1.
      {"a2147483648", "a1", true}, {"a4294967296", "a0", false}, {"a0", "a4294967296", false},
      {"a4294967297", "a2", true},
  };
  const qorin::CompareStringNumberAwareIgnoreCase less;
  for (const Case& c : cases) EXPECT_EQ(less(c.a, c.b), c.less) << '"' << c.a << "\" < \"" << c.b << '"';
}

// std::sort runs off the end of its range when the comparator is not a strict
// weak ordering; a generated list with ties of case and leading zeros, sorted
// and then checked pair by pair on a sample, catches a comparator that breaks it.
TEST(NaturalOrder, IsAStrictWeakOrderingForStdSort) {
  const char* stems[] = {"file", "File", "FILE", "img", "Img_", "a"};
  const char* extensions[] = {".txt", ".TXT", "", "b.txt", "_v2"};
  std::mt19937 random(12345);
  std::vector<std::string> names(3000);
  for (std::string& name : names) {
    name = stems[random() % 6] + std::string(random() % 4 == 0 ? "00" : "") + std::to_string(random() % 500);
    name += extensions[random() % 5];
  }
  const qorin::CompareStringNumberAwareIgnoreCase less;
  std::sort(names.begin(), names.end(), less);
  for (std::size_t i = 0; i < names.size(); i += 7) {
    for (std::size_t j = i + 1; j < names.size(); j += 5) ASSERT_FALSE(less(names[j], names[i])) << names[j];
  }
}

}  // namespace
