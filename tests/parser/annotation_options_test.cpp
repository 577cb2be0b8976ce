// Options: the sweep grammar shared by every kind, then each kind's own
// words, the sweep forms it accepts and the text it writes.
#include <qorin/parser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit_type;

// Accepts every form, so that only the grammar decides.
class AnyForm : public ParamOptionData {
 public:
  bool sweep_type_is_legal() const override { return true; }

 protected:
  bool parse_special(std::vector<std::string>*) override { return true; }
  std::string reformat_impl(const std::string& sweep_text) override { return "x{ " + sweep_text + " }"; }
};

void parse_body(AnyForm* option, const std::string& body) {
  option->set_full_text("x{" + body + "}");
  option->parse(find_unit_type("cap"));
}

TEST(AnnotationSweep, EveryBranchOfTheGrammar) {
  struct Case { const char* body; ParamOptionSweepType type; const char* canonical; };  // null: as typed
  const Case cases[] = {
      {"   ", sweep_invalid, nullptr}, {"1", sweep_invalid, nullptr}, {"1 2 3", sweep_invalid, nullptr},
      {"1 to", sweep_invalid, nullptr}, {"1 to 2 x 1", sweep_invalid, nullptr},
      {"1 to 2 by 1 pF 3", sweep_invalid, nullptr},
      // Each value in one word or in two.
      {"1 to 2", sweep_range, "x{ 1 to 2 }"}, {"1  pF   to 2pF", sweep_range, "x{ 1pF to 2pF }"},
      {"1pF to 2 pF", sweep_range, "x{ 1pF to 2pF }"}, {"1 to 2 by 0.5", sweep_stepped_range, "x{ 1 to 2 by 0.5 }"},
      {"1 pF to 2 pF by 0.5 pF", sweep_stepped_range, "x{ 1pF to 2pF by 0.5pF }"},
      {"1 to 2 pF by 1", sweep_stepped_range, "x{ 1 to 2pF by 1 }"},
      {"+/- 5 %", sweep_percent_delta, "x{ +/- 5% }"}, {"+/- 5%", sweep_percent_delta, "x{ +/- 5% }"},
      {"+/- 1 pF", sweep_delta, "x{ +/- 1pF }"}, {"+/- 1", sweep_delta, "x{ +/- 1 }"},
      {"1% to 2%", sweep_range, "x{ 1% to 2% }"},
      // A failed two-word read leaves the option invalid, the start of a
      // range included: a range never loses the words of its start.
      {"1 to 2 xF", sweep_invalid, nullptr}, {"1 to 2 by", sweep_invalid, nullptr},
      {"1 to 2 xF by 1", sweep_invalid, nullptr}, {"1 to 2 by 1 xF", sweep_invalid, nullptr},
      {"+/- 1 xF", sweep_invalid, nullptr}, {"1 xF to 2", sweep_invalid, nullptr},
      // "+/-" with no word, or too many, still gives a deviation.
      {"+/-", sweep_delta, "x{ +/-  }"}, {"+/- 1 2 3", sweep_delta, "x{ +/-  }"},
  };
  for (const Case& c : cases) {
    AnyForm option;
    parse_body(&option, c.body);
    EXPECT_EQ(option.sweep_type(), c.type) << c.body;
    option.reformat();
    EXPECT_EQ(option.get_full_text(), c.canonical ? c.canonical : "x{" + std::string(c.body) + "}") << c.body;
  }
}

TEST(AnnotationSweep, DeviationUnitDecidesThePercentForm) {
  AnyForm option;
  parse_body(&option, "1% to 2%");
  EXPECT_FALSE(option.start().units().is_valid());  // "%" counts only after "+/-"
  parse_body(&option, "+/- 5 %");
  // With the wrong word count the previous delta stays, and so does its form.
  for (const char* body : {"+/-", "+/- 1 2 3"}) {
    parse_body(&option, body);
    EXPECT_EQ(option.sweep_type(), sweep_percent_delta) << body;
    EXPECT_EQ(option.start().value(), "5") << body;
  }
}

TEST(AnnotationKinds, LegalFormsAndCanonicalTexts) {
  struct Case { const char* option; bool valid; const char* canonical; };  // null: as typed
  const Case cases[] = {
      {"opt{ 1 to 2 }", true, nullptr}, {"opt{ +/- 5 % }", true, "opt{ +/- 5% }"},
      {"opt{ 1 to 2 by 0.1 }", false, nullptr}, {"opt{ discrete 1 to 2 by 0.1 }", true, nullptr},
      {"opt{ discrete 1 to 2 }", false, nullptr}, {"opt{ ppt 1 to 10 }", true, nullptr},
      {"opt{ ppt discrete 1 to 3 by 1 }", true, nullptr}, {"opt{ ppt }", false, nullptr},
      {"opt{ unconst }", false, nullptr}, {"opt{ unconst 1 to 2 }", false, nullptr},
      {"noopt{ 1  to 2 }", true, "noopt{ 1 to 2 }"}, {"notune{  1 to 2 }", false, nullptr},
      {"stat{ 1 to 2 }", false, nullptr}, {"stat{ Gauss +/- 5 % }", false, nullptr},
      {"stat{ uniform 1 to 2 }", true, nullptr}, {"stat{ uniform +/- 1 pF }", true, "stat{ uniform +/- 1pF }"},
      {"stat{ gauss 1 to 2 }", false, nullptr}, {"stat{ gauss +/- 5 % }", true, "stat{ gauss +/- 5% }"},
      {"stat{ lognormal 1 to 2 }", false, nullptr}, {"stat{ lognormal +/- 1 }", true, nullptr},
      {"stat{ discrete +/- 1 }", false, nullptr}, {"stat{ discrete 1 to 5 by 1 }", true, nullptr},
      {"stat{  distcompname  =  a b }", true, "stat{ distcompname = ab }"},
      {"stat{ distcompname = }", false, nullptr}, {"stat{ distcompname ab }", false, nullptr},
      {"tune{ 1 to 2 by 0.1 }", true, nullptr}, {"tune{ 1 to 10 logScale }", true, nullptr},
      {"tune{ 1 to 2 by 1 logScale }", false, nullptr}, {"tune{ logScale 1 to 2 }", false, nullptr},
      {"tune{ +/- 1 }", false, nullptr}, {"doe{ 1 to 2 by 1 }", false, nullptr},
      {"doe{ 1 to 2 }", true, nullptr}, {"doe{ +/- 10 % }", true, "doe{ +/- 10% }"},
      // An invalid option is kept as typed while its neighbour is re-formed.
      {"opt{ 1 to 2 by 0.1 } doe{ +/- 10 % }", false, "opt{ 1 to 2 by 0.1 } doe{ +/- 10% }"},
  };
  for (const Case& c : cases) {
    const std::string typed = c.option;
    ParamItemParser parser;
    parser.set_unit_type(find_unit_type("cap"));
    parser.parse("1 " + typed, true);
    ASSERT_EQ(parser.options().size(), static_cast<std::size_t>(std::count(typed.begin(), typed.end(), '{')));
    EXPECT_EQ(parser.is_valid(), c.valid) << typed;
    parser.reformat();
    EXPECT_EQ(parser.get_combined_string(), "1 " + (c.canonical ? c.canonical : typed));
  }
}

TEST(AnnotationKinds, TextsThatParsingNeverGives) {
  ParamOptData opt;
  opt.set_unconstrained(true);
  opt.set_sweep_type(sweep_empty);
  EXPECT_TRUE(opt.sweep_type_is_legal());
  opt.reformat();
  EXPECT_EQ(opt.get_full_text(), "opt{ unconst  }");
  opt.parse(nullptr);  // "unconst" reaches the sweep
  EXPECT_TRUE(opt.is_invalid());
  ParamStatData stat;
  stat.set_type(static_cast<ParamStatData::Type>(7));
  stat.set_sweep_type(sweep_delta);
  stat.reformat();
  EXPECT_EQ(stat.get_full_text(), "stat{ gauss +/-  }");
}

std::string reparsed(ParamOptionData&& option, const char* first, const char* second) {
  for (const char* text : {first, second}) {
    option.set_full_text(text);
    option.parse(nullptr);
  }
  option.reformat();
  return option.get_full_text();
}

TEST(AnnotationKinds, ReparsingResetsTheKindWordsButNotLogScale) {
  // A stale "discrete" would refuse the range and keep the typed text.
  EXPECT_EQ(reparsed(ParamOptData(), "opt{ ppt discrete 1 to 3 by 1 }", "opt{ 1  to 3 }"), "opt{ 1 to 3 }");
  EXPECT_EQ(reparsed(ParamOptData(), "opt{ unconst 1 to 2 }", "opt{ 1  to 2 }"), "opt{ 1 to 2 }");
  EXPECT_EQ(reparsed(ParamTuneData(), "tune{ 1 to 2 logScale }", "tune{ 1 to 3 }"), "tune{ 1 to 3 logScale }");
}

}  // namespace
