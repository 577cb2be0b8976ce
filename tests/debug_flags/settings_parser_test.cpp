#include "debug/flags/flag_settings_parser.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using qorin::Debug::detail::parseFlagSettings;
using qorin::Debug::detail::quotedText;
using Settings = qorin::Debug::detail::FlagSettings;

// fuzz/debug_flags_fuzz.cpp holds the matcher to the std::regex reading;
// these are the readings that users' variables rely on.
TEST(FlagSettingsParser, Readings) {
  struct Case { std::string text; Settings expected; };
  const Case cases[] = {
      {"", {}}, {"FOO", {{"FOO", "1"}}}, {"FOO=2.5e1", {{"FOO", "2.5e1"}}}, {"FOO=\"a,b\"", {{"FOO", "\"a,b\""}}},
      {"FOO='x'", {{"FOO", "'x'"}}}, {"FOO=\"\"", {{"FOO", "\"\""}}}, {"FOO=abc, BAR", {{"BAR", "1"}}},
      {"FOO=1,FOO=2", {{"FOO", "2"}}}, {"logfile=2,LOGFILE", {{"logfile", "2"}, {"LOGFILE", "1"}}},
      {" A = 1 ,\tb = '2' , C ", {{"A", "1"}, {"b", "'2'"}, {"C", "1"}}}, {"A=1-+e.E", {{"A", "1-+e.E"}}},
      {"A=\"x\ny\",B", {{"A", "\"x\ny\""}, {"B", "1"}}}, {"A\n,\n B", {{"A", "1"}, {"B", "1"}}}, {"A\r", {{"A", "1"}}},
      {"A,B\nC", {}}, {"A=1,B\r", {}}, {"A=1;B=2", {}}, {"A=,B", {{"B", "1"}}}, {"A B,C", {{"C", "1"}}},
      {"A=\"x\"y,B", {{"B", "1"}}}, {"A='open,B", {{"B", "1"}}}, {",A", {{"A", "1"}}}, {"A,", {{"A", "1"}}},
      {"A=1,,B", {{"A", "1"}, {"B", "1"}}}, {"=x,", {}}, {"Gr\xc3\xbc\xc3\x9f" "e=1,B", {{"B", "1"}}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(parseFlagSettings(c.text), c.expected) << c.text;
  }
}

TEST(FlagSettingsParser, QuotedTextNeedsOneKindOfQuoteAndNoLineBreak) {
  struct Case { const char* value; std::optional<std::string> expected; };
  const Case cases[] = {
      {"'a\"b'", "a\"b"}, {"\"a\"b\"", "a\"b"}, {"\"\"", ""},      {"\"a'", std::nullopt},
      {"2.5", std::nullopt}, {"\"", std::nullopt}, {"'x\ny'", std::nullopt}, {"'x'y", std::nullopt},
  };
  for (const Case& c : cases) {
    const auto text = quotedText(c.value);
    EXPECT_EQ(text ? std::optional<std::string>(*text) : std::nullopt, c.expected) << c.value;
  }
}

// std::regex needs a stack frame per character here; these must not.
TEST(FlagSettingsParser, MegabyteInputs) {
  const std::string big(1000000, 'x');
  EXPECT_EQ(parseFlagSettings("BIG='" + big + "',N"), (Settings{{"BIG", "'" + big + "'"}, {"N", "1"}}));

  std::string entries;
  for (int i = 0; i < 50000; ++i) entries += "F" + std::to_string(i) + "=1,";
  const Settings many = parseFlagSettings(entries + "LAST='z'");
  ASSERT_EQ(many.size(), 50001u);
  EXPECT_EQ(many.at("F49999"), "1");
  EXPECT_EQ(many.at("LAST"), "'z'");
}

}  // namespace
