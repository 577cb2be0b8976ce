#include <qorin/text.h>

#include <gtest/gtest.h>

TEST(Padding, AlignsWithoutEverTruncating) {
  struct Case { const char* text; int width; const char* expected; };
  const Case cases[] = {
      {"ab", 0, "ab"},   {"ab", 4, "  ab"}, {"ab", -4, "ab  "},
      {"abc", 2, "abc"}, {"abc", -3, "abc"}, {"", 2, "  "},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::padString(c.text, c.width), c.expected) << c.text << " / " << c.width;
  }
}

TEST(Padding, RepeatChar) {
  EXPECT_EQ(qorin::repeatChar('-', 3), "---");
  EXPECT_EQ(qorin::repeatChar('-', 0), "");
}
