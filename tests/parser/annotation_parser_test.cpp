// ParamItemParser: which trailing options are pulled off, in which order the
// annotation is written back, the settings that act on all its values, and
// reuse of one parser.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit;
using qorin::units::find_unit_type;

std::string type_name(const qorin::units::UnitType* type) { return type ? type->unit_type_name() : ""; }

TEST(AnnotationParser, PullsOptionsRightToLeftAndRefusesTheRest) {
  struct Case { const char* text; const char* options; const char* nominal; };  // options in list order
  const Case cases[] = {
      {"1 doe{ a } tune{ b } stat{ c } opt{ d }", "opt{ d }|stat{ c }|tune{ b }|doe{ a }", "1"},
      // A second option of a kind, and an unknown keyword, stop the pulling.
      {"1 opt{ 1 to 2 } opt{ 3 to 4 }", "opt{ 3 to 4 }", "1 opt{ 1 to 2 }"},
      {"1 tune{ a } notune{ b }", "notune{ b }", "1 tune{ a }"},
      {"1 foo{ x } opt{ 1 to 2 }", "opt{ 1 to 2 }", "1 foo{ x }"},
      // Quotes or braces in the body; too short; '{' at position 0.
      {"1 opt{ 'a' }", "", "1 opt{ 'a' }"}, {"1 opt{ \"a\" }", "", "1 opt{ \"a\" }"}, {"1 opt{ }}", "", "1 opt{ }}"},
      {"opt{}", "opt{}", ""}, {"opt}", "", "opt}"}, {"{abc}", "", "{abc}"},
      // Blanks: only ' ' counts, only one is dropped, one may stand before '{'.
      {"1 opt { 1 to 2 }", "opt { 1 to 2 }", "1"}, {"1   opt{ 1 to 2 }  ", "opt{ 1 to 2 }", "1"},
      {"1 opt{ 1 to 2 }\t", "", "1 opt{ 1 to 2 }\t"}, {"1\topt{ 1 to 2 }", "", "1\topt{ 1 to 2 }"},
      // Keywords: the last blank-separated word, exact, case included, after
      // at most one "no".
      {"stat{ a }opt{ b }", "", "stat{ a }opt{ b }"},
      {"1 noopt{ 1 to 2 }", "noopt{ 1 to 2 }", "1"}, {"1 Opt{ 1 to 2 }", "", "1 Opt{ 1 to 2 }"},
      {"1 no{ 1 }", "", "1 no{ 1 }"}, {"1 nonoopt{ 1 }", "", "1 nonoopt{ 1 }"}, {"1 opts{ 1 }", "", "1 opts{ 1 }"},
  };
  for (const Case& c : cases) {
    ParamItemParser parser;
    parser.parse(c.text, false);
    std::string list;
    for (const auto& option : parser.options()) list += (list.empty() ? "" : "|") + option->get_full_text();
    EXPECT_EQ(list, c.options) << c.text;
    EXPECT_EQ(parser.nominal(), c.nominal) << c.text;
    EXPECT_EQ(parser.is_valid(), list.empty()) << c.text;  // unparsed bodies; the nominal is not looked at
  }
}

TEST(AnnotationParser, LaterOptionsComeRightAfterTheNominal) {
  ParamItemParser parser;
  parser.parse("1 stat{ a } opt{ b }", true);
  ParamTuneData* tune = parser.add_tune();
  EXPECT_EQ(parser.add_tune(), tune);
  EXPECT_EQ(parser.tune(), tune);
  EXPECT_EQ(parser.get_combined_string(), "1  stat{ a } opt{ b }");  // empty until set
  tune->set_full_text("tune{ 1  to 2 by 1 }");
  tune->parse(nullptr);
  parser.reformat();
  EXPECT_EQ(parser.get_combined_string(), "1 tune{ 1 to 2 by 1 } stat{ a } opt{ b }");
  EXPECT_FALSE(parser.is_valid());  // stat{ a } and opt{ b } do not parse
}

TEST(AnnotationParser, LegacyUnitCodesAreOffsetByTwo) {
  // Codes outside the catalogue follow valid ones: they must clear the type.
  const std::pair<int, const char*> cases[] = {{0, "freq"}, {-3, ""}, {-2, "string"}, {16, ""},
                                               {4, "cap"},  {8, "power"}, {15, "pct"}};
  ParamItemParser parser;
  for (auto [code, type] : cases) {
    parser.set_legacy_unit(static_cast<DMUnitE>(code));
    EXPECT_EQ(type_name(parser.unit_type()), type) << code;
  }
}

TEST(AnnotationParser, AnyUnitTakesTheTypeFromTheNominal) {
  // A bare nominal carries no unit, so the options get no type either.
  const std::pair<const char*, const char*> cases[] = {{"3 mm opt{ 1 mm to 5 mm }", "lng"}, {"3 opt{ 1 to 5 }", ""}};
  for (auto [text, type] : cases) {
    ParamItemParser parser;
    parser.set_unit_type(find_unit_type("cap"));
    parser.allow_any_unit(true);
    parser.parse(text, true);
    EXPECT_EQ(type_name(parser.unit_type()), type) << text;
  }
}

TEST(AnnotationParser, RescalesEveryUnitlessValue) {
  ParamItemParser parser;
  parser.set_unit_type(find_unit_type("freq"));
  parser.parse("1 opt{ 2 to 3 MHz } tune{ 1e3 to x by 500 }", true);
  parser.scale_all_unitless_values(find_unit("kHz"));
  EXPECT_EQ(parser.get_combined_string(), "0.001kHz opt{ 0.002kHz to 3MHz } tune{ 1kHz to x by 0.5kHz }");
}

TEST(AnnotationParser, DbmtowReachesEveryValueAndLaterOptions) {
  ParamItemParser parser;
  parser.set_unit_type(find_unit_type("power"));
  parser.parse("30 dbm tune{ 20 dBm to (a) dBW by 1 dBm } stat{ gauss +/- 1 dBm }", true);
  parser.reformat();
  EXPECT_EQ(parser.get_combined_string(),
            "dbmtow(30) tune{ dbmtow(20) to dbwtow(a) by dbmtow(1) } stat{ gauss +/- dbmtow(1) }");
  parser.set_use_dbmtow_functions(false);
  EXPECT_EQ(parser.get_combined_string(), "30dBm tune{ 20dBm to (a) dBW by 1dBm } stat{ gauss +/- 1dBm }");
  EXPECT_FALSE(parser.add_opt()->start().uses_dbmtow_functions());
}

}  // namespace
