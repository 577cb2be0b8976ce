#include <qorin/debug.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(AddInfo, PrefixesOnceAndKeepsTheDanglingSeparator) {
  struct Case { std::string message, existing, expected; };
  const Case cases[] = {
      {"a", "", "a: "},          {"a", "abc", "abc"},       {"b", "abc", "b: abc"},
      {"", "x", "x"},            {"", "", ": "},            {"abcd", "abc", "abcd: abc"},
      {"ab", "ab", "ab"},        {"Saving", "Saving: x", "Saving: x"},
      {std::string("a\0b", 3), std::string("a\0c", 3), std::string("a\0b: a\0c", 8)},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::addInfo(c.message, c.existing), c.expected) << c.message << " / " << c.existing;
  }
}

TEST(ErrorMessages, FramesWithSingleLineFeeds) {
  struct Case { const char* text; const char* before; const char* after; const char* expected; };
  const Case cases[] = {
      {"E", "", "", "E"},   {"E", "B", "A", "B\nE\nA"}, {"E", "B", "", "B\nE"},
      {"", "B", "A", "B\n\nA"}, {"E\n", " ", "\n", " \nE\n\n\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::errorMessages(c.text, c.before, c.after), c.expected) << c.text;
  }
}

TEST(MoreInfoForException, KeepsInnermostFirstAndJoinsOutermostFirst) {
  qorin::MoreInfoForException e("outer", "inner");
  EXPECT_EQ(e.fullMessage(), "outer: inner");
  EXPECT_EQ(e.getMessages(), (std::vector<std::string>{"inner", "outer"}));

  e.addMessage("top");
  e.addMessage("top");  // already the prefix: the text stays, the list still grows
  EXPECT_EQ(e.fullMessage(), "top: outer: inner");
  EXPECT_EQ(e.getMessages(), (std::vector<std::string>{"inner", "outer", "top", "top"}));
}

}  // namespace
