// ParamItemParser: which trailing options are pulled off, in which order the
// annotation is written back, and the settings that act on all its values.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit;
using qorin::units::find_unit_type;

// Full texts in list order (the reverse of the textual order), '|'-separated.
std::string option_list(const ParamItemParser& parser) {
  std::string list;
  for (const auto& option : parser.options()) list += (list.empty() ? "" : "|") + option->get_full_text();
  return list;
}

TEST(AnnotationParser, PullsOptionsRightToLeftAndRefusesTheRest) {
  struct Case { const char* text; const char* options; const char* nominal; };
  const Case cases[] = {
      {"1 opt{ 1 to 2 } stat{ a }", "stat{ a }|opt{ 1 to 2 }", "1"},
      {"1 opt{ 1 to 2 } opt{ 3 to 4 }", "opt{ 3 to 4 }", "1 opt{ 1 to 2 }"},
      {"1 foo{ x } opt{ 1 to 2 }", "opt{ 1 to 2 }", "1 foo{ x }"},
      {"1 opt{ 'a' }", "", "1 opt{ 'a' }"},
      {"1 opt{ \"a\" }", "", "1 opt{ \"a\" }"},
      {"1 opt{ a }}", "", "1 opt{ a }}"},
      {"opt{}", "opt{}", ""},
      {"opt}", "", "opt}"},
      {"x{}", "", "x{}"},
      {"{abc}", "", "{abc}"},
      {"1 noopt{ 1 to 2 }", "noopt{ 1 to 2 }", "1"},
      {"1 opt { 1 to 2 }", "opt { 1 to 2 }", "1"},
      {"1   opt{ 1 to 2 }  ", "opt{ 1 to 2 }", "1"},
      {"1 opt{ 1 to 2 }\t", "", "1 opt{ 1 to 2 }\t"},
      {"1\topt{ 1 to 2 }", "", "1\topt{ 1 to 2 }"},
      {"1 Opt{ 1 to 2 }", "", "1 Opt{ 1 to 2 }"},
      {"1 no{ 1 to 2 }", "", "1 no{ 1 to 2 }"},
      {"1 nonopt{ 1 to 2 }", "", "1 nonopt{ 1 to 2 }"},
      {"1 opts{ 1 }", "", "1 opts{ 1 }"},
      {"1 { 1 }", "", "1 { 1 }"},
      {"stat{ a }opt{ b }", "", "stat{ a }opt{ b }"},
      {"1 doe{ a } tune{ b } stat{ c } opt{ d }", "opt{ d }|stat{ c }|tune{ b }|doe{ a }", "1"},
      {"1 tune{ a } notune{ b }", "notune{ b }", "1 tune{ a }"},
  };
  for (const Case& c : cases) {
    ParamItemParser parser;
    parser.parse(c.text, false);
    EXPECT_EQ(option_list(parser), c.options) << c.text;
    EXPECT_EQ(parser.nominal(), c.nominal) << c.text;
  }
}

TEST(AnnotationParser, PrefixNoDisablesTheOption) {
  ParamItemParser parser;
  parser.parse("1 nostat{ gauss +/- 1 } tune{ 1 to 2 by 1 }", true);
  ASSERT_NE(parser.stat(), nullptr);
  ASSERT_NE(parser.tune(), nullptr);
  EXPECT_TRUE(parser.stat()->disabled());
  EXPECT_TRUE(parser.tune()->enabled());
  EXPECT_TRUE(parser.is_valid());
}

TEST(AnnotationParser, LaterOptionsComeRightAfterTheNominal) {
  ParamItemParser parser;
  parser.parse("1 stat{ a } opt{ b }", true);
  ParamTuneData* tune = parser.add_tune();
  EXPECT_EQ(parser.add_tune(), tune);
  EXPECT_EQ(parser.get_combined_string(), "1  stat{ a } opt{ b }");  // empty until set

  ParserValue value;
  for (auto [text, set] : {std::pair{"1", &ParamOptionData::set_start_delta},
                           std::pair{"2", &ParamOptionData::set_stop}, std::pair{"1", &ParamOptionData::set_step}}) {
    value.set_value_with_optional_unit_suffix(text, nullptr, false, false);
    (tune->*set)(value);
  }
  tune->set_sweep_type(sweep_stepped_range);
  parser.reformat();
  EXPECT_EQ(parser.get_combined_string(), "1 tune{ 1 to 2 by 1 } stat{ a } opt{ b }");
  EXPECT_FALSE(parser.is_valid());  // stat{ a } and opt{ b } do not parse
}

TEST(AnnotationParser, ValidityLooksAtOptionsOnly) {
  ParamItemParser parser;
  parser.parse("not a value at all", true);
  EXPECT_TRUE(parser.is_valid());
  ParamOptData* opt = parser.add_opt();
  EXPECT_EQ(parser.opt(), opt);
  EXPECT_FALSE(parser.is_valid());
}

TEST(AnnotationParser, LegacyUnitCodesAreOffsetByTwo) {
  struct Case { int code; const char* type; };
  const Case cases[] = {{-3, nullptr}, {-2, "string"}, {0, "freq"}, {4, "cap"}, {8, "power"}, {15, "pct"}, {16, nullptr}};
  for (const Case& c : cases) {
    ParamItemParser parser;
    parser.set_legacy_unit(static_cast<DMUnitE>(c.code));
    if (c.type == nullptr) {
      EXPECT_EQ(parser.unit_type(), nullptr) << c.code;
    } else {
      ASSERT_NE(parser.unit_type(), nullptr) << c.code;
      EXPECT_EQ(parser.unit_type()->unit_type_name(), c.type) << c.code;
    }
  }
}

TEST(AnnotationParser, AnyUnitTakesTheTypeFromTheNominal) {
  ParamItemParser parser;
  parser.allow_any_unit(true);
  parser.parse("3 mm opt{ 1 mm to 5 mm }", true);
  ASSERT_NE(parser.unit_type(), nullptr);
  EXPECT_EQ(parser.unit_type()->unit_type_name(), "lng");
  parser.reformat();
  EXPECT_EQ(parser.get_combined_string(), "3mm opt{ 1mm to 5mm }");

  ParamItemParser bare;
  bare.allow_any_unit(true);
  bare.parse("3 opt{ 1 to 5 }", true);
  EXPECT_EQ(bare.unit_type(), nullptr);
}

TEST(AnnotationParser, RescalesEveryUnitlessValue) {
  ParamItemParser parser;
  parser.set_unit_type(find_unit_type("freq"));
  parser.parse("1 opt{ 2 to 3 MHz } stat{ gauss +/- x }", true);
  parser.scale_all_unitless_values(find_unit("kHz"));
  EXPECT_EQ(parser.get_combined_string(), "0.001kHz opt{ 0.002kHz to 3MHz } stat{ gauss +/- x }");
}

TEST(AnnotationParser, DbmtowReachesEveryValueAndLaterOptions) {
  ParamItemParser parser;
  parser.set_unit_type(find_unit_type("power"));
  parser.parse("30 dbm opt{ 20 dBm to 40 dBm } stat{ gauss +/- 1 dBm }", true);
  parser.reformat();
  EXPECT_EQ(parser.get_combined_string(), "dbmtow(30) opt{ dbmtow(20) to dbmtow(40) } stat{ gauss +/- dbmtow(1) }");
  parser.set_use_dbmtow_functions(false);
  EXPECT_EQ(parser.get_combined_string(), "30dBm opt{ 20dBm to 40dBm } stat{ gauss +/- 1dBm }");
  EXPECT_FALSE(parser.add_tune()->start().uses_dbmtow_functions());
}

}  // namespace
