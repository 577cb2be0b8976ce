#include <qorin/parser.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using qorin::parser::ParserValue;
using namespace qorin::units;

namespace {

ParserValue parsed(const char* text, const char* type) {
  ParserValue v;
  v.set_value_with_optional_unit_suffix(text, find_unit_type(type), false, false);
  return v;
}

std::string scale_error(const char* text, const char* type, UnitAndMultiplier to) {
  ParserValue v = parsed(text, type);
  try {
    v.scale_value_to_new_unit(to);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "(no exception)";
}

}  // namespace

TEST(ParserValueScale, RescalesNumbersToSixDigits) {
  struct Case { const char* text; const char* type; const char* to; bool ok; const char* combined; };
  const Case cases[] = {
      {"1", "freq", "kHz", true, "0.001kHz"},   {"1500 MHz", "freq", "GHz", true, "1.5GHz"},
      {"1.23456789 GHz", "freq", "MHz", true, "1234.57MHz"},
      {"1e-34", "cap", "pF", true, "0pF"},      {"2e-33", "cap", "pF", true, "2e-21pF"},
      {"1.000", "freq", "Hz", true, "1.000Hz"},  // an unchanged number keeps its text
      {"1", "power", "dBm", true, "dbmtow(30)"}, {"0", "power", "dBm", false, "0"},
      {"-1", "power", "mW", false, "-1"},        {"1e38", "cap", "pF", false, "1e38"},
      {"10 dBm", "power", "mW", true, "10mW"},   {"x", "freq", "kHz", false, "x"},
  };
  for (const Case& c : cases) {
    ParserValue v = parsed(c.text, c.type);
    EXPECT_EQ(v.scale_value_to_new_unit(find_unit(c.to)), c.ok) << c.text;
    EXPECT_EQ(v.combined_value(), c.combined) << c.text;
  }
}

TEST(ParserValueScale, RefusesOtherTypesAndIncompleteUnits) {
  EXPECT_EQ(scale_error("2 pF", "cap", find_unit("Hz")), "Cannot scale from \"pF\" to \"Hz\".");
  const std::string to_null = "Cannot convert parameter value from mks units to null units.";
  EXPECT_EQ(scale_error("1", "freq", {}), to_null);
  EXPECT_EQ(scale_error("2 pF", "cap", {find_unit_type("cap"), nullptr}), to_null);
  ParserValue v = parsed("2 pF", "cap");
  EXPECT_TRUE(v.scale_if_unitless(find_unit("Hz")));  // has units: no check, no change
  EXPECT_EQ(v.combined_value(), "2pF");
}

TEST(ParserValueScale, SettersWithUnits) {
  const UnitAndMultiplier mhz = find_unit("MHz");
  struct Case { const char* value; UnitAndMultiplier units; const char* combined; };
  const Case cases[] = {
      {"5 GHz", mhz, "5GHz"},  // the text's own unit wins
      {" x ", mhz, "xMHz"},    {"a+b", find_unit("pF"), "(a+b) pF"},
      {"m", find_unit("mOhm"), "mmOhm"},  {"7", {}, "7"},
  };
  for (const Case& c : cases) {
    ParserValue v;
    v.set_value_and_unit_multiplier(c.value, c.units);
    EXPECT_EQ(v.combined_value(), c.combined) << c.value;
  }
  ParserValue v;
  v.set_numeric_value_and_unit_multiplier("5 GHz", mhz);
  EXPECT_EQ(v.combined_value(), "(5 GHz) MHz");
  const UnitType* freq = find_unit_type("freq");
  EXPECT_TRUE(v.set_numeric_value_and_unit_string(" 2 ", "k", freq, false));
  EXPECT_FALSE(v.set_numeric_value_and_unit_string("3", "kOhm", freq, false));
  EXPECT_EQ(v.combined_value(), "2kHz");
  EXPECT_FALSE(v.set_value_and_unit_string("5", "%", freq, false));
  EXPECT_TRUE(v.set_value_and_unit_string("5", "%", freq, true));
  EXPECT_EQ(v.combined_value(), "5%");
  EXPECT_FALSE(v.set_unit_string("g", freq, false));
  EXPECT_TRUE(v.set_unit_string("None", freq, false));
  EXPECT_EQ(v.combined_value(), "5");
}
