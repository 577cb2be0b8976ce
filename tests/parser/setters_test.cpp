// Values set by the program go through the same blank trimming as parsed
// ones, and a reparsed option forgets what its previous text said.
#include <qorin/parser.h>

#include <gtest/gtest.h>

using namespace qorin::parser;
using namespace qorin::units;

namespace {

TEST(ParserValueSetters, TrimBlanksAroundTheValue) {
  const UnitType* frequency = find_unit_type("freq");
  ParserValue one;
  one.set_numeric_value_and_unit_multiplier("  2.5  ", find_unit("GHz"));
  EXPECT_EQ(one.value(), "2.5");
  EXPECT_EQ(one.combined_value(), "2.5GHz");
  ParserValue two;
  ASSERT_TRUE(two.set_numeric_value_and_unit_string("  7 ", "MHz", frequency, false));
  EXPECT_EQ(two.value(), "7");
  EXPECT_EQ(two.combined_value(), "7MHz");
}

TEST(ParamOptDataReparse, UnconstrainedIsForgotten) {
  const UnitType* capacitance = find_unit_type("cap");
  ParamOptData option;
  option.set_full_text("opt{ unconst 1 pF to 2 pF }");
  option.parse(capacitance);
  EXPECT_TRUE(option.is_unconstrained());
  option.set_full_text("opt{ 1 pF to 2 pF }");
  option.parse(capacitance);
  EXPECT_FALSE(option.is_unconstrained());
  option.reformat();
  EXPECT_EQ(option.get_full_text(), "opt{ 1pF to 2pF }");
}

}  // namespace
