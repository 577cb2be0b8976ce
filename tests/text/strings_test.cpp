#include <qorin/text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Tokens = std::vector<std::string>;

TEST(Tokenize, EachDelimiterByteEndsOneToken) {
  struct Case { const char* text; const char* delimiters; bool keep_empty; Tokens expected; };
  const Case cases[] = {
      {"a b  c", " ", false, {"a", "b", "c"}},
      {"a b  c", " ", true, {"a", "b", "", "c"}},
      {"a,,b", ",", true, {"a", "", "b"}},
      {"a,", ",", true, {"a", ""}},
      {",a", ",", false, {"a"}},
      {"", ",", true, {""}},
      {"", ",", false, {}},
      {"abc", "", true, {"abc"}},
      {"a;b,c", ",;", true, {"a", "b", "c"}},   // a set of bytes...
      {"a,;b", ",;", true, {"a", "", "b"}},     // ...not a separator sequence
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::tokenize(c.text, c.delimiters, c.keep_empty), c.expected)
        << '"' << c.text << "\" / \"" << c.delimiters << "\" / " << c.keep_empty;
  }
}

TEST(Whitespace, TrimsAndCollapsesTheSixAsciiBlanks) {
  struct Case { const char* text; const char* expected; };
  const Case cases[] = {
      {"  a \t\n b  ", "a b"}, {"\t", ""},        {"", ""},
      {"a\tb", "a b"},         {"a\v\f\rb", "a b"}, {" a  b  c ", "a b c"},
      {"a\xA0" "b", "a\xA0" "b"},  // a no-break space byte is not white space
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::trim_and_remove_extra_internal_whitespace(c.text), c.expected) << c.text;
  }
}

TEST(Quotes, OnlyOneLevelOfDoubleQuotes) {
  struct Case { const char* text; bool quoted; const char* stripped; const char* added; };
  const Case cases[] = {
      {"\"", false, "\"", "\"\"\""},
      {"\"\"", true, "", "\"\"\"\""},
      {"\"\"x\"\"", true, "\"x\"", "\"\"\"x\"\"\""},
      {"'a'", false, "'a'", "\"'a'\""},
      {"", false, "", "\"\""},
      {"\"a", false, "\"a", "\"\"a\""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::isQuoted(c.text), c.quoted) << c.text;
    EXPECT_EQ(qorin::stripQuotes(c.text), c.stripped) << c.text;
    EXPECT_EQ(qorin::addQuotes(c.text), c.added) << c.text;
  }
}

TEST(Ordinal, TeensAndSigns) {
  struct Case { int n; const char* expected; };
  const Case cases[] = {
      {1, "1st"},     {2, "2nd"},       {3, "3rd"},     {4, "4th"},       {0, "0th"},
      {11, "11th"},   {12, "12th"},     {13, "13th"},   {21, "21st"},     {22, "22nd"},
      {111, "111th"}, {112, "112th"},   {101, "101st"}, {-1, "-1st"},     {-12, "-12th"},
      {-2147483647 - 1, "-2147483648th"},
  };
  for (const Case& c : cases) EXPECT_EQ(qorin::convert_number_to_ordinal(c.n), c.expected) << c.n;
}

TEST(NaturalOrder, LessThanTable) {
  struct Case { std::string a, b; bool less; };
  const Case cases[] = {
      {"a2", "a10", true},      {"a10", "a2", false},   {"B", "a", false},
      {"", "x", true},          {"x", "", false},       {"", "", false},
      {"abc", "abcd", true},    {"abc", "abc", false},
      {"File2", "file2", false}, {"file2", "File2", false},
      {"a007", "a7", false},    {"a7", "a007", false},
      {"x1y", "x01y", false},   {"x01y", "x1y", false},
      // Letters fold before comparing: '_' (0x5F) sorts before 'B' as 'b'.
      {"_", "B", true},         {"B", "_", false},
      // Signed bytes: UTF-8 sorts before every ASCII byte, digits included.
      {"\xC3\xA9", "a", true},  {"\xC3\xA9", "0", true}, {"a", "\xC3\xA9", false},
      // The end after a number compares as 0, above a negative byte.
      {"x1\xC3", "x1", true},   {"x1", "x1\xC3", false},
      // Digit runs wrap as 32-bit signed ints.
      {"a2147483648", "a1", true},   // wraps to -2147483648
      {"a4294967296", "a0", false},  // wraps to 0...
      {"a0", "a4294967296", false},  // ...and so equals it
      {"a4294967297", "a2", true},   // wraps to 1
  };
  const qorin::CompareStringNumberAwareIgnoreCase less;
  for (const Case& c : cases) EXPECT_EQ(less(c.a, c.b), c.less) << '"' << c.a << "\" < \"" << c.b << '"';
}

// std::sort runs off the end of its range when the comparator is not a strict
// weak ordering; a generated list with ties of case and leading zeros, sorted
// and then checked pair by pair, catches a comparator that breaks it.
TEST(NaturalOrder, IsAStrictWeakOrderingForStdSort) {
  const char* stems[] = {"file", "File", "FILE", "img", "Img_", "a"};
  const char* extensions[] = {".txt", ".TXT", "", "b.txt", "_v2"};
  std::mt19937 random(12345);
  std::vector<std::string> names;
  for (int k = 0; k < 3000; ++k) {
    const unsigned n = random() % 500;
    std::string number = std::to_string(n);
    if (random() % 4 == 0) number = "00" + number;
    names.push_back(stems[random() % 6] + number + extensions[random() % 5]);
  }
  const qorin::CompareStringNumberAwareIgnoreCase less;
  std::sort(names.begin(), names.end(), less);
  ASSERT_TRUE(std::is_sorted(names.begin(), names.end(), less));
  // Sortedness is checked pairwise on a sample: nothing later is less.
  for (std::size_t i = 0; i < names.size(); i += 7) {
    EXPECT_FALSE(less(names[i], names[i]));
    for (std::size_t j = i + 1; j < names.size(); j += 5) {
      ASSERT_FALSE(less(names[j], names[i])) << names[j] << " before " << names[i];
    }
  }
}

}  // namespace
