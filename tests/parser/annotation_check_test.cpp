// check_annotation names every problem. That the canonical text is a fixed
// point keeping the meaning is annotation_roundtrip_fuzz's oracle.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit_type;

std::string diagnostics_of(const AnnotationCheck& check) {
  std::string text;
  for (const AnnotationDiagnostic& d : check.diagnostics) {
    text += std::string(text.empty() ? "" : " | ") + (d.severity == AnnotationDiagnostic::error ? "E " : "W ") + d.message;
  }
  return text;
}

TEST(AnnotationCheck, NamesEveryProblem) {
  struct Case { const char *text, *type, *canonical, *diagnostics; };
  const Case cases[] = {
      {"10 pF opt{ 1 pF to 20 pF }", "cap", "10pF opt{ 1pF to 20pF }", ""},
      {"1 opt{ unconst }", "num", "1 opt{ unconst }", "E invalid option \"opt{ unconst }\": its body does not parse"},
      {"1 stat{ distcompname = a } noopt{ 1 to 2 }", "num", "1 stat{ distcompname = a } noopt{ 1 to 2 }", ""},
      {"1 tune{ 1 to 2 }", "num", "1 tune{ 1 to 2 }", "E invalid option \"tune{ 1 to 2 }\": tune does not allow a range"},
      {"1 tune{ +/- 1 2 3 }", "num", "1 tune{ +/- 1 2 3 }",
       "E invalid option \"tune{ +/- 1 2 3 }\": tune does not allow a deviation"},
      // The nominal: a value of the type, or a warning (with a unit of the
      // wrong type: tool case annotate_warning).
      {"10 pX", nullptr, "10 pX", "W nominal \"10 pX\" is not a number, variable, quoted string or file reference"},
      {"(a+b) pF", "cap", "(a+b) pF", ""}, {"x_1", "cap", "x_1", ""}, {"", "cap", "", ""},
      // The deviation rule's dropped words are named (tool case annotate_mixed_lines).
      {"10 stat{ gauss +/- }", "num", "10 stat{ gauss +/-  }", ""},
  };
  for (const Case& c : cases) {
    const AnnotationCheck check = check_annotation(c.text, {c.type ? find_unit_type(c.type) : nullptr, false, true});
    EXPECT_EQ(check.canonical, c.canonical) << c.text;
    EXPECT_EQ(diagnostics_of(check), c.diagnostics) << c.text;
  }
  // Under any unit the nominal's type survives even where its unit is hidden.
  EXPECT_EQ(check_annotation("(a+b) deg", {nullptr, true, true}).canonical, "(a+b) deg");
  EXPECT_EQ(check_annotation("20 Celsius", {find_unit_type("temp"), false, true}).canonical, "20");
}

// One value read as a nominal gets the same verdict and text as the nominal
// of check_annotation.
TEST(AnnotationCheck, ANominalAloneGetsTheChecksOfTheWholeAnnotation) {
  struct Case { const char *text, *type; bool any_unit, well_formed; const char* canonical; double mks; };
  const double none = -1.0;
  const Case cases[] = {
      {"10 pF", "cap", false, true, "10pF", 1e-11},       {"(a)*(b) pF", "cap", false, false, "(a)*(b) pF", none},
      {"2.5", "freq", false, true, "2.5", 2.5},           {"10 dbm", "power", false, true, "dbmtow(10)", 0.01},
      {"x_1 GHz", "freq", false, true, "(x_1) GHz", none}, {"25 deg", nullptr, true, true, "25 deg", 25.0},
      {"3 bad", nullptr, true, false, "3 bad", none},     {"", "cap", false, true, "", none},
  };
  for (const Case& c : cases) {
    const AnnotationSettings settings{c.type ? find_unit_type(c.type) : nullptr, c.any_unit, true};
    ParserValue value;
    value.set_value_with_optional_unit_suffix(c.text, settings.unit_type, false, settings.allow_any_unit);
    EXPECT_EQ(is_well_formed_nominal(value), c.well_formed) << c.text;
    EXPECT_EQ(canonical_nominal(value, settings), c.canonical) << c.text;
    EXPECT_EQ(value_in_mks(value).value_or(none), c.mks) << c.text;
    const AnnotationCheck check = check_annotation(c.text, settings);
    EXPECT_EQ(check.canonical, c.canonical) << c.text;
    EXPECT_EQ(check.diagnostics.empty(), c.well_formed) << c.text;
  }
}

TEST(AnnotationCheck, AReusedParserStartsClean) {
  ParamItemParser parser;
  AnnotationCheck check;
  check_annotation(parser, "3 dBm opt{ 1 dBm to 2 dBm } stat{ gauss +/- 1 }", {nullptr, true, false}, &check);
  EXPECT_EQ(check.canonical, "3dBm opt{ 1dBm to 2dBm } stat{ gauss +/- 1 }");
  // No option, no type and no notation of the first text carries over.
  check_annotation(parser, "5 opt{ 1 to 2 }", {nullptr, true, true}, &check);
  EXPECT_EQ(check.canonical, "5 opt{ 1 to 2 }");
  EXPECT_EQ(parser.unit_type(), nullptr);
  EXPECT_EQ(parser.stat(), nullptr);
  EXPECT_EQ(parser.options().size(), 1u);
  parser.clear();
  EXPECT_EQ(parser.get_combined_string(), "");
  EXPECT_EQ(parser.opt(), nullptr);
}

}  // namespace
