// The sweep grammar shared by every option kind, read through a kind that
// accepts every form so that only the grammar decides.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit_type;

class AnyForm : public ParamOptionData {
 public:
  bool sweep_type_is_legal() const override { return true; }

 protected:
  bool parse_special(std::vector<std::string>*) override { return true; }
  std::string reformat_impl(const std::string& sweep_text) override { return "x{ " + sweep_text + " }"; }
};

struct SweepCase {
  const char* body;
  ParamOptionSweepType type;
  const char* canonical;  // after reformat(); null: the typed text stays
};

TEST(AnnotationSweep, EveryBranchOfTheGrammar) {
  const SweepCase cases[] = {
      {"", sweep_invalid, nullptr},
      {"   ", sweep_invalid, nullptr},
      {"1", sweep_invalid, nullptr},
      {"1 2 3", sweep_invalid, nullptr},
      {"to 2", sweep_invalid, nullptr},
      // Ranges: each value in one word or in two.
      {"1 to 2", sweep_range, "x{ 1 to 2 }"},
      {"1  pF   to 2pF", sweep_range, "x{ 1pF to 2pF }"},
      {"1pF to 2 pF", sweep_range, "x{ 1pF to 2pF }"},
      {"1 to", sweep_invalid, nullptr},
      {"1 to 2 xF", sweep_invalid, nullptr},
      {"1 to 2 by", sweep_invalid, nullptr},
      // Stepped ranges.
      {"1 to 2 by 0.5", sweep_stepped_range, "x{ 1 to 2 by 0.5 }"},
      {"1 pF to 2 pF by 0.5 pF", sweep_stepped_range, "x{ 1pF to 2pF by 0.5pF }"},
      {"1 to 2 pF by 1", sweep_stepped_range, "x{ 1 to 2pF by 1 }"},
      {"1 to 2 xF by 1", sweep_invalid, nullptr},
      {"1 to 2 x 1", sweep_invalid, nullptr},
      {"1 to 2 by 1 xF", sweep_invalid, nullptr},
      {"1 to 2 by 1 pF 3", sweep_invalid, nullptr},
      // Deviations; "%" counts only after "+/-".
      {"+/- 5 %", sweep_percent_delta, "x{ +/- 5% }"},
      {"+/- 5%", sweep_percent_delta, "x{ +/- 5% }"},
      {"+/- 1 pF", sweep_delta, "x{ +/- 1pF }"},
      {"+/- 1", sweep_delta, "x{ +/- 1 }"},
      {"+/- 1 xF", sweep_invalid, nullptr},
      {"1% to 2%", sweep_range, "x{ 1% to 2% }"},
      // The deviation quirk: no word, or too many, still gives a deviation.
      {"+/-", sweep_delta, "x{ +/-  }"},
      {"+/- 1 2 3", sweep_delta, "x{ +/-  }"},
  };
  for (const SweepCase& c : cases) {
    AnyForm option;
    std::string typed = std::string("x{") + c.body + "}";
    option.set_full_text(typed);
    option.parse(find_unit_type("cap"));
    EXPECT_EQ(option.sweep_type(), c.type) << c.body;
    option.reformat();
    EXPECT_EQ(option.get_full_text(), c.canonical ? c.canonical : typed) << c.body;
  }
}

TEST(AnnotationSweep, PercentOnlyCountsAfterTheDeviationSign) {
  AnyForm option;
  option.set_full_text("x{ 1% to 2% }");
  option.parse(find_unit_type("cap"));
  EXPECT_FALSE(option.start().units().is_valid());
  option.set_full_text("x{ +/- 5 % }");
  option.parse(find_unit_type("cap"));
  ASSERT_NE(option.start().unit_type(), nullptr);
  EXPECT_EQ(option.start().unit_type()->unit_type_name(), "pct");
}

TEST(AnnotationSweep, DeviationWithTheWrongWordCountKeepsTheOldDelta) {
  AnyForm option;
  option.set_full_text("x{ +/- 5 % }");
  option.parse(find_unit_type("cap"));
  for (const char* text : {"x{ +/- }", "x{ +/- 1 2 3 }"}) {
    option.set_full_text(text);
    option.parse(find_unit_type("cap"));
    EXPECT_EQ(option.sweep_type(), sweep_percent_delta) << text;
    EXPECT_EQ(option.start().value(), "5") << text;
  }
}

TEST(AnnotationSweep, InvalidKeepsTypedTextAndDisabledGetsNo) {
  AnyForm option;
  option.set_full_text("x{ 1 to }");
  option.set_enabled(false);
  option.parse(nullptr);
  option.reformat();
  EXPECT_EQ(option.get_full_text(), "x{ 1 to }");

  option.set_full_text("x{  1 to 2 }");
  option.parse(nullptr);
  option.reformat();
  EXPECT_EQ(option.get_full_text(), "nox{ 1 to 2 }");
}

TEST(AnnotationSweep, RescalesOnlyUnitlessValues) {
  AnyForm option;
  option.set_full_text("x{ 1e-12 to 2 nF by 5e-13 }");
  option.parse(find_unit_type("cap"));
  option.scale_all_unitless_values(qorin::units::find_unit("pF"));
  EXPECT_EQ(option.get_full_text(), "x{ 1pF to 2nF by 0.5pF }");
}

TEST(AnnotationSweep, DbmtowSwitchesEveryValue) {
  AnyForm option;
  option.set_full_text("x{ 10 dBm to 20dbm by 1 dBm }");
  option.parse(find_unit_type("power"));
  option.reformat();
  EXPECT_EQ(option.get_full_text(), "x{ dbmtow(10) to dbmtow(20) by dbmtow(1) }");
  option.set_use_dbmtow_functions(false);
  EXPECT_EQ(option.get_full_text(), "x{ 10dBm to 20dBm by 1dBm }");
}

}  // namespace
