// Short annotations and file-based values.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;

class Modes : public ShortAnnotationHelper {
 public:
  Modes(int tune, int opt, int stat, int doe) : tune_(tune), opt_(opt), stat_(stat), doe_(doe) {}
  int tune_display_mode() const override { return tune_; }
  int opt_display_mode() const override { return opt_; }
  int stat_display_mode() const override { return stat_; }
  int doe_display_mode() const override { return doe_; }

 private:
  int tune_, opt_, stat_, doe_;
};

TEST(AnnotationShort, EachKindAsItsPolicySays) {
  struct Case { Modes modes; const char* text; const char* expected; };
  const Case cases[] = {
      {{0, 1, 2, 0}, "10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }", "10pF {}"},
      {{0, 0, 1, 0}, "10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }", "10pF opt{ 1 pF to 20 pF } {-}"},
      {{1, 2, 2, 0}, "1 notune{ a } doe{ b }", "1 {-} doe{ b }"},
      {{2, 0, 0, 1}, "1 doe{ a } tune{ b }", "1 {}"},
      {{0, 0, 0, 7}, "1 opt{ a } doe{ b }", "1 opt{ a }"},
      {{1, 1, 1, 1}, "1", "1"},
  };
  for (const Case& c : cases) {
    ParamItemParser parser;
    parser.set_unit_type(qorin::units::find_unit_type("cap"));
    EXPECT_EQ(parser.get_short_annotation_string(c.modes, c.text), c.expected) << c.text;
  }
}

TEST(AnnotationFileBasedValue, TakesDatasetAndValueApart) {
  struct Case { const char* text; const char* type; bool valid; const char* dac; const char* value; const char* units; };
  const Case cases[] = {
      {"file{ds1, 3}", nullptr, true, "ds1", "3", ""},
      {"file{ds1 , 3 }", nullptr, true, "ds1 ", "3 ", ""},
      {"  file{ds1,3}  ", nullptr, true, "ds1", "3", ""},
      {"file{ds1, 3} pF", "cap", true, "ds1", "3", "pF"},
      {"file{, }", nullptr, true, "", "", ""},
      {"file{a, b, c}", nullptr, true, "a", "b, c", ""},
      {"file{ds1}", nullptr, false, "", "", ""},
      {"file{a, b}c", nullptr, false, "", "", ""},
      {"file{a, b}}", nullptr, false, "", "", ""},
      {"file{a,   }", nullptr, true, "a", "", ""},
      {"FILE{a, b}", nullptr, false, "", "", ""},
      {"", nullptr, false, "", "", ""},
  };
  for (const Case& c : cases) {
    ParserValue value;
    value.set_value_with_optional_unit_suffix(c.text, qorin::units::find_unit_type(c.type ? c.type : ""), false,
                                              false);
    ParamQDXFileBasedValue file(value);
    EXPECT_EQ(file.is_valid(), c.valid) << c.text;
    EXPECT_EQ(file.get_dac(), c.dac) << c.text;
    EXPECT_EQ(file.get_value(), c.value) << c.text;
    EXPECT_EQ(file.get_units(), c.units) << c.text;
  }
}

}  // namespace
