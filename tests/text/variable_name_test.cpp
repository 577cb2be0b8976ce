#include <qorin/text.h>

#include <gtest/gtest.h>

namespace {

using Decoded = std::pair<std::string, bool>;

TEST(VariableName, EncodesWithExactEscapes) {
  struct Case { std::string name; const char* prefix; const char* expected; };
  const Case cases[] = {
      {"", "p_", "p_"},           {"freq1", "v", "vfreq1"},   {"1st", "v", "vZ_Z1st"},  {"_x", "v", "vZ_Z__x"},
      {".x", "v", "vZ_Z_2ex"},    {"a.b c", "", "a_2eb_20c"}, {"Z_Z", "", "Z__Z"},      {"a\x10", "", "a_10"},
      {"a\x7F", "", "a_7f"},      {std::string(1, '\0'), "", "Z_Z_0"},
      // Below 0x10 one digit, from 0x80 up a negative char: no round trip.
      {"\tb", "", "Z_Z_9b"},      {"a\x80", "", "a_-80"},     {"a\xC3\xA9", "", "a_-3d_-57"}, {"a\xFF", "", "a_-1"},
  };
  for (const Case& c : cases) EXPECT_EQ(qorin::encode_to_variable_name(c.name, c.prefix), c.expected) << c.name;
}

TEST(VariableName, DecodeTakesExactlyTwoLowerCaseHexDigits) {
  struct Case { const char* text; const char* prefix; Decoded expected; };
  const Case cases[] = {
      {"p_", "p_", {"", true}},        {"Z_Z", "", {"", true}},          {"a_2eb_20c", "", {"a.b c", true}},
      {"vZ_Z__x", "v", {"_x", true}},  {"a_ff", "", {"a\xFF", true}},    {"Z_Z_9b", "", {"\x9B", true}},
      {"Z_Zabc", "", {"abc", true}},   // the marker is skipped whatever follows...
      {"aZ_Z", "", {"aZ_Z", false}},   // ...and recognised only after the prefix
      {"Z_", "", {"Z_", false}},       {"a___", "", {"a___", false}},    {"q_2E", "", {"q_2E", false}},
      {"q_-3d", "", {"q_-3d", false}}, {"q_2g", "", {"q_2g", false}},    {"ab_", "", {"ab_", false}},
      {"ab_2", "", {"ab_2", false}},   {"a-b", "", {"a-b", false}},      {"xab", "y", {"xab", false}},
      {"y", "yy", {"y", false}},
  };
  for (const Case& c : cases) EXPECT_EQ(qorin::decode_from_variable_name(c.text, c.prefix), c.expected) << c.text;
}

}  // namespace
