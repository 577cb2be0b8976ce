// Short annotations and file-based values.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;

class Modes : public ShortAnnotationHelper {
 public:
  Modes(int tune, int opt, int stat, int doe) : modes_{tune, opt, stat, doe} {}
  int tune_display_mode() const override { return modes_[0]; }
  int opt_display_mode() const override { return modes_[1]; }
  int stat_display_mode() const override { return modes_[2]; }
  int doe_display_mode() const override { return modes_[3]; }

 private:
  int modes_[4];
};

TEST(AnnotationShort, EachKindAsItsPolicySays) {
  struct Case { Modes modes; const char* text; const char* expected; };
  const Case cases[] = {
      {{0, 1, 2, 0}, "10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }", "10pF {}"},
      {{0, 0, 1, 0}, "10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }", "10pF opt{ 1 pF to 20 pF } {-}"},
      {{1, 2, 2, 0}, "1 notune{ a } doe{ b }", "1 {-} doe{ b }"},
      {{7, 0, 0, 1}, "1 doe{ a } tune{ b }", "1 {}"},
  };
  for (const Case& c : cases) {
    ParamItemParser parser;
    parser.set_unit_type(qorin::units::find_unit_type("cap"));
    EXPECT_EQ(parser.get_short_annotation_string(c.modes, c.text), c.expected) << c.text;
  }
}

TEST(AnnotationFileBasedValue, TakesDatasetAndValueApart) {
  struct Case { const char* text; const char* type; const char* parts; };  // [invalid ]dac|value|units
  const Case cases[] = {
      {"file{ds1, 3}", "", "ds1|3|"}, {"file{ds1 , 3 }", "", "ds1 |3 |"}, {"  file{ds1,3}  ", "", "ds1|3|"},
      {"file{ds1, 3} pF", "cap", "ds1|3|pF"}, {"file{a, b, c}", "", "a|b, c|"}, {"file{a,   }", "", "a||"},
      {"file{ds1}", "", "invalid ||"}, {"file{a, b}c", "", "invalid ||"}, {"file{a, b}}", "", "invalid ||"},
      {"FILE{a, b}", "", "invalid ||"}, {"", "", "invalid ||"},
  };
  for (const Case& c : cases) {
    ParserValue value;
    value.set_value_with_optional_unit_suffix(c.text, qorin::units::find_unit_type(c.type), false, false);
    ParamQDXFileBasedValue file(value);
    std::string parts = file.is_valid() ? "" : "invalid ";
    EXPECT_EQ(parts + file.get_dac() + "|" + file.get_value() + "|" + file.get_units(), c.parts) << c.text;
  }
}

}  // namespace
