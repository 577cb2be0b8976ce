// The lexical core in both styles; runs on every platform.
#include <qorin/fs.h>

#include <gtest/gtest.h>

#include <utf8.h>

namespace {

using qorin::PathStyle;
constexpr PathStyle W = PathStyle::windows, P = PathStyle::posix;

struct TextCase { PathStyle style; const char* in; const char* expected; };

TEST(LexicalNormalize, DotsRootsAndSeparators) {
  const TextCase cases[] = {
      {W, "a/b", "a\\b"}, {W, "a\\.\\b\\", "a\\b"}, {W, "a\\..\\..\\b", "..\\b"}, {W, ".", ""}, {W, "a\\..", ""},
      {W, "..\\a\\..\\..", "..\\.."}, {W, "C:\\..\\x", "C:\\..\\x"}, {W, "C:/a/./b", "C:/a\\b"}, {W, "C:..", "C:.."},
      {W, "C:\\a\\\\b\\\\", "C:\\a\\b"}, {W, "\\\\srv\\s\\..\\x", "\\\\srv\\x"}, {W, "C:\\.", "C:\\"},
      {W, "a\\b\\..\\", "a"}, {W, "a.\\b", "a.\\b"}, {W, "\\\\srv", "\\\\srv"},
      {W, ".\\b:x\\.", ".\\b:x"}, {W, "a\\..\\b:x", ".\\b:x"}, {W, ".\\b:x\\..", ""},  // b: stays no drive
      {P, "a/./b/../c/", "a/c"}, {P, "//a/./b", "//a/b"}, {P, "a\\.\\b", "a\\.\\b"}, {P, "/..", "/.."}, {P, "./", ""},
      {P, "C:/x/..", "C:"}, {P, "a//b", "a/b"},
  };
  for (const TextCase& c : cases) {
    EXPECT_EQ(qorin::normalize_path(c.in, c.style), c.expected) << c.in;
    EXPECT_EQ(qorin::normalize_path(c.expected, c.style), c.expected) << c.in << " twice";
  }
}

TEST(LexicalResolve, RootNamesAndDirectoriesDecide) {
  struct Case { PathStyle style; const char* base; const char* p; const char* expected; };
  const Case cases[] = {
      {W, "C:\\w", "x\\..\\y", "C:\\w\\y"}, {W, "C:\\w", "\\t", "C:\\t"}, {W, "C:\\w", "C:t", "C:\\w\\t"},
      {W, "C:\\w", "c:t", "c:\\w\\t"},      {W, "C:\\w", "D:t", "D:t"},   {W, "C:\\w", "D:\\z\\.", "D:\\z"},
      {W, "w", "D:t", "D:w\\t"},            {W, "", "a", "a"},            {W, "\\\\srv\\s", "\\x", "\\\\srv\\x"},
      {P, "/w", "x/../y", "/w/y"},          {P, "/w", "/t", "/t"},        {P, "/w", "a\\b", "/w/a\\b"},
      {P, "/w", "C:t", "/w/C:t"},
  };
  for (const Case& c : cases) EXPECT_EQ(qorin::resolve_path(c.base, c.p, c.style), c.expected) << c.base << " + " << c.p;
}

TEST(LexicalMakeRelative, CommonRootAndMaxUp) {
  struct Case { PathStyle style; const char* path; const char* base; int max_up; const char* expected; bool made; };
  const Case cases[] = {
      {W, "C:\\a\\b\\c", "C:\\a\\x", 1, "..\\b\\c", true}, {W, "C:\\a\\b\\c", "C:\\a\\x", 0, "C:\\a\\b\\c", false},
      {W, "D:\\a", "C:\\a", 5, "D:\\a", false},            {W, "C:\\a", "c:\\A\\", 0, "", true},
      {W, "C:\\a\\b", "C:\\a", -1, "C:\\a\\b", false},            {W, "C:\\a", "C:\\a\\b", -1, "C:\\a", false},
      {W, "a\\b", "C:\\a", 3, "a\\b", false},              {W, "\\a", "\\b", 3, "\\a", false},
      {W, "C:\\A\\b\\..\\c", "C:\\a\\.\\d", 1, "..\\c", true}, {W, "C:\\x", "C:\\..\\a", 9, "C:\\x", false},
      {W, "C:\\a\\b:x", "C:\\a", 0, ".\\b:x", true},
      // A share or a drive behind a prefix is part of the volume: no ".." leaves it.
      {W, "\\\\srv\\s1\\a", "\\\\srv\\s2\\b", 9, "\\\\srv\\s1\\a", false},
      {W, "\\\\srv\\s1\\a", "\\\\SRV\\S1\\b", 1, "..\\a", true},
      {W, "\\\\srv\\s1\\a", "\\\\srv\\s1", 0, "a", true},
      {W, "\\\\srv\\s1", "\\\\srv", 9, "\\\\srv\\s1", false},
      {W, "\\\\?\\C:\\a", "\\\\?\\D:\\b", 9, "\\\\?\\C:\\a", false},
      {W, "\\\\?\\C:\\a", "\\\\?\\c:\\b", 1, "..\\a", true},
      {W, "\\\\.\\pipe\\a", "\\\\.\\pipf\\b", 9, "\\\\.\\pipe\\a", false},
      {W, "\\\\?\\UNC\\srv\\s1\\a", "\\\\?\\unc\\srv\\s2\\a", 9, "\\\\?\\UNC\\srv\\s1\\a", false},
      {W, "\\\\?\\UNC\\srv\\s1\\a", "\\\\?\\unc\\srv\\s1\\b", 1, "..\\a", true},
      // The base is normalized first; one that starts with ".." cannot be climbed by name.
      {W, "C:\\a\\b", "C:\\a\\x\\..\\y", 1, "..\\b", true},
      {P, "/a/b/c", "/a/x", 1, "../b/c", true},             {P, "/a", "/A", 1, "../a", true},
      {P, "a", "/a", 1, "a", false},
  };
  for (const Case& c : cases) {
    bool made = !c.made;
    EXPECT_EQ(qorin::make_relative_path(c.path, c.base, c.style, &made, c.max_up), c.expected) << c.path;
    EXPECT_EQ(made, c.made) << c.path << " from " << c.base;
  }
  EXPECT_EQ(qorin::make_relative_path("C:\\a", "C:\\b", W, nullptr, 0), "C:\\a");  // null flag allowed
  // Comparison stops at a zero unit: "..\0x" must not pass for "..".
  const std::string zero_base("/../..\0x", 8);
  EXPECT_EQ(qorin::make_relative_path("/../../../..", zero_base, P, nullptr, 9), "/../../../..");
}

TEST(LexicalCompare, UpperCasedUtf16UnitsOrBytes) {
  struct Case { PathStyle style; std::string a, b; int expected; };
  const Case cases[] = {
      {W, "c:\\Data", "C:\\DATA", 0}, {W, "C:\\data", "C:\\data\\", -1}, {W, "a", "B", -1},
      {W, "\xC3\xBF", "\xC5\xB8", 0},          // y with diaeresis: U+00FF upper-cases to U+0178
      {W, "\xC3\x9F", "SS", 1},                // sharp s has no one-unit upper case
      {W, "\xC4\xB1", "I", 1},                 // dotless i keeps itself, as CharUpperW does
      {W, "\xF0\x9F\x98\x80", "\xEF\xBF\xBF", -1},  // a surrogate (0xD83D) sorts below U+FFFF
      {W, "a\\b", "a\\.\\b", 1}, {W, std::string("a\0x", 3), std::string("a\0y", 3), 0},
      {P, "a", "A", 1}, {P, "a\\b", "a/b", 1}, {P, "/x", "/x", 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::compare_paths(c.a, c.b, c.style), c.expected) << c.a << " vs " << c.b;
    EXPECT_EQ(qorin::compare_paths(c.b, c.a, c.style), -c.expected) << c.b << " vs " << c.a;
  }
  EXPECT_THROW(qorin::compare_paths("\xC0\xAF", "a", W), utf8::invalid_utf8);
}

TEST(LexicalStartsWith, CharacterPrefixNotElementPrefix) {
  struct Case { PathStyle style; const char* path; const char* prefix; bool expected; };
  const Case cases[] = {{W, "C:\\data2\\f", "C:\\data", true}, {W, "C:\\DATA2", "c:\\data", true},
                        {W, "C:\\da", "C:\\data", false},      {W, "x", "", true},
                        {P, "/Data", "/data", false},          {P, "/data2", "/data", true}};
  for (const Case& c : cases) EXPECT_EQ(qorin::path_starts_with(c.path, c.prefix, c.style), c.expected) << c.path;
}

TEST(LexicalSplit, RootNameRootDirectoryElements) {
  struct Case { PathStyle style; const char* in; qorin::PathParts expected; };
  const Case cases[] = {{W, "C:/a\\\\b\\", {"C:", "/", {"a", "b", ""}}}, {W, "\\\\srv\\s\\x", {"\\\\srv", "\\", {"s", "x"}}},
                        {W, "C:x", {"C:", "", {"x"}}},                    {W, "1:x", {"", "", {"1:x"}}},
                        {W, "\\\\?\\C:\\a", {"\\\\?", "\\", {"C:", "a"}}},
                        {W, "\\\\.\\pipe\\p", {"\\\\.", "\\", {"pipe", "p"}}},
                        {P, "//a", {"", "//", {"a"}}},                    {P, "C:\\x", {"", "", {"C:\\x"}}}};
  for (const Case& c : cases) {
    const qorin::PathParts parts = qorin::split_path(c.in, c.style);
    EXPECT_EQ(parts.root_name, c.expected.root_name) << c.in;
    EXPECT_EQ(parts.root_directory, c.expected.root_directory) << c.in;
    EXPECT_EQ(parts.elements, c.expected.elements) << c.in;
  }
}

TEST(LexicalSeparators, BackslashOnlyInWindowsStyle) {
  EXPECT_EQ(qorin::add_path_separator("", W) + qorin::add_path_separator("a/", W), "\\a/");
  EXPECT_EQ(qorin::add_path_separator("a\\", P), "a\\/");
  EXPECT_TRUE(qorin::is_path_separator('\\', W) && !qorin::is_path_separator('\\', P));
  EXPECT_FALSE(qorin::is_path_separator(':', W) || qorin::ends_with_path_separator("", W));
}

}  // namespace
