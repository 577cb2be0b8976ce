#include <qorin/parser.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using qorin::parser::ParserValue;
using namespace qorin::units;

namespace {

const UnitType* type(const char* name) { return name ? find_unit_type(name) : nullptr; }

// The first catalogue unit named `unit`; for "" the type alone, which a value
// without a recognised unit keeps.
bool has_units(const UnitAndMultiplier& actual, const char* unit, const char* type_name) {
  const UnitAndMultiplier expected = *unit ? find_unit(unit) : UnitAndMultiplier(type(type_name), nullptr);
  return actual.type() == expected.type() && actual.multiplier() == expected.multiplier();
}

ParserValue parsed(const char* text, const char* type_name, bool allow_percent = false, bool allow_any = false) {
  ParserValue v;
  v.set_value_with_optional_unit_suffix(text, type(type_name), allow_percent, allow_any);
  return v;
}

}  // namespace

TEST(ParserValueParse, SplitsValueAndUnit) {
  struct Case { const char *text, *type, *value, *unit, *combined; bool allow_percent = false, any_unit = false; };
  const Case cases[] = {
      // The first-match walk: "Hz" leaves "1k", refused, then "kHz" leaves "1".
      {"1kHz", "freq", "1", "kHz", "1kHz"},          {"  1 k  ", "freq", "1", "kHz", "1kHz"},
      {"1 m", "res", "1", "mOhm", "1mOhm"},          {"1 M", "res", "1", "MOhm", "1MOhm"},
      // "mm" matches by its letter first and is refused, "nm" follows later.
      {"3 nm", "lng", "3", "nm", "3nm"},             {"2.5", "freq", "2.5", "", "2.5"},
      {"x_1 GHz", "freq", "x_1", "GHz", "(x_1) GHz"},   {"x_1GHz", "freq", "x_1GHz", "", "x_1GHz"},
      {"\"a\"pF", "cap", "\"a\"", "pF", "\"a\"pF"},  {"file{a.txt} Hz", "freq", "file{a.txt}", "Hz", "file{a.txt}Hz"},
      {"(a+b) pF", "cap", "a+b", "pF", "(a+b) pF"},  {"a+b pF", "cap", "a+b pF", "", "a+b pF"},
      // Parentheses stay unless what they hold glues to the unit safely.
      {"(a)pF", "cap", "a", "pF", "(a) pF"},          {"(5)pF", "cap", "5", "pF", "5pF"},
      {"()m", "lng", "", "mm", "mm"},
      {"pF", "cap", "", "pF", "pF"},                 {"2.5 deg", "ang", "2.5", "deg", "2.5"},  // unit not shown
      // Power: lower-case "dbm", and the dbmtow/dbwtow forms read back.
      {"10 dbm", "power", "10", "dBm", "dbmtow(10)"}, {"10dBW", "power", "10", "dBW", "dbwtow(10)"},
      {"10 m", "power", "10", "mW", "10mW"},          {" dbwtow ( -3 ) ", "power", "-3", "dBW", "dbwtow(-3)"},
      {"dbmtow(a+b)", "power", "a+b", "dBm", "dbmtow(a+b)"}, {"dbmtow_gain", "power", "dbmtow_gain", "", "dbmtow_gain"},
      {"DBMTOW(10)", "power", "DBMTOW(10)", "", "DBMTOW(10)"}, {"dbmtow(10)", "cap", "dbmtow(10)", "", "dbmtow(10)"},
      // Only a matched pair comes off; a quoted ')' does not count.
      {"(a)*(b) pF", "cap", "(a)*(b) pF", "", "(a)*(b) pF"}, {"(')') pF", "cap", "')'", "pF", "(')') pF"},
      {"dbmtow((a)*(b))", "power", "(a)*(b)", "dBm", "dbmtow((a)*(b))"},
      {"dbmtow((a))", "power", "(a)", "dBm", "dbmtow((a))"},
      {"dbmtow(((()))", "power", "dbmtow(((()))", "", "dbmtow(((()))"},
      // Percent first, then any unit in catalogue order, then the type.
      {"5 %", "cap", "5", "%", "5%", true},           {"5 %", "cap", "5 %", "", "5 %"},
      {"5 ft", "dist", "5", "ft", "5ft", false, true}, {"5 m", "lng", "5", "mOhm", "5mOhm", false, true},
  };
  for (const Case& c : cases) {
    const ParserValue v = parsed(c.text, c.type, c.allow_percent, c.any_unit);
    EXPECT_EQ(v.value(), c.value) << c.text;
    EXPECT_EQ(v.combined_value(), c.combined) << c.text;
    EXPECT_TRUE(has_units(v.units(), c.unit, c.type)) << c.text;
  }
}

TEST(ParserValueParse, UnitWords) {
  struct Case { std::string text; const char* type; bool allow_percent; const char* unit; };  // unit null: not found
  const Case cases[] = {
      {"k", "freq", false, "kHz"}, {"kHz", "res", false, nullptr},  {"ft", nullptr, false, "ft"},
      {"dbm", "power", false, "dBm"}, {"dbm", nullptr, false, nullptr}, {"%", "cap", true, "%"},
      {"%", "cap", false, nullptr}, {"", "ang", false, "deg"},      {"", "freq", false, nullptr},
      {"", "num", false, nullptr},  {"Hz ", "freq", false, nullptr}, {"None", "freq", false, ""},
      {std::string("pF\0x", 4), nullptr, false, nullptr},
  };
  for (const Case& c : cases) {
    UnitAndMultiplier out(type("cap"), nullptr);  // untouched on failure
    EXPECT_EQ(ParserValue::find_unit(&out, c.text, type(c.type), c.allow_percent), c.unit != nullptr) << c.text;
    EXPECT_TRUE(c.unit ? has_units(out, c.unit, c.type) : has_units(out, "", "cap")) << c.text;
  }
}

TEST(ParserValueParse, QuotedStringsAndVariableNames) {
  struct Case { const char* text; bool expected; };
  const Case quoted[] = {
      {"'it\\'s'", true}, {"'it's'", false}, {"\"a\"\"b\"", true}, {"\"a\"b\"", false}, {"\"a\\\"b\"", true},
      {"  'x'  ", true},  {"'", true},       {"   ", false},       {"'a\"", false},     {"\"a\"\"", false},
      {"\t'x'", false},   {"\"\"\"\"", true},
  };
  for (const Case& c : quoted) EXPECT_EQ(ParserValue::is_quoted_string(c.text), c.expected) << c.text;
  const Case names[] = {{"_", true},      {"A9_z", true}, {"", false},    {"1x", false},
                        {"x-1", false},   {" x", false},  {"\xc3\xa9", false}};
  for (const Case& c : names) EXPECT_EQ(ParserValue::is_valid_variable_name(c.text), c.expected) << c.text;
}

TEST(ParserValueScale, RescalesNumbersToSixDigitsOrRefuses) {
  // expected: the combined text afterwards, or the message of the exception.
  struct Case { const char* text; const char* type; UnitAndMultiplier to; bool ok; const char* expected; };
  const UnitAndMultiplier khz = find_unit("kHz"), pf = find_unit("pF"), dbm = find_unit("dBm");
  const char* to_null = "Cannot convert parameter value from mks units to null units.";
  const Case cases[] = {
      {"1", "freq", khz, true, "0.001kHz"},        {"1.23456789 GHz", "freq", find_unit("MHz"), true, "1234.57MHz"},
      {"1e-34", "cap", pf, true, "0pF"},           {"2e-33", "cap", pf, true, "2e-21pF"},
      {"1.000", "freq", find_unit("Hz"), true, "1.000Hz"},  // an unchanged number keeps its text
      {"1", "power", dbm, true, "dbmtow(30)"},     {"0", "power", dbm, false, "0"},
      {"-1", "power", find_unit("mW"), false, "-1"}, {"1e38", "cap", pf, false, "1e38"},
      {"10 dBm", "power", find_unit("mW"), true, "10mW"}, {"x", "freq", khz, false, "x"},
      {"2 pF", "cap", find_unit("Hz"), false, "Cannot scale from \"pF\" to \"Hz\"."},
      {"1", "freq", {}, false, to_null},           {"2 pF", "cap", {type("cap"), nullptr}, false, to_null},
  };
  for (const Case& c : cases) {
    ParserValue v = parsed(c.text, c.type);
    try {
      EXPECT_EQ(v.scale_value_to_new_unit(c.to), c.ok) << c.text;
      EXPECT_EQ(v.combined_value(), c.expected) << c.text;
    } catch (const std::runtime_error& e) {
      EXPECT_EQ(e.what(), std::string(c.expected)) << c.text;
    }
  }
  ParserValue v = parsed("2 pF", "cap");
  EXPECT_TRUE(v.scale_if_unitless(find_unit("Hz")));  // has units: no check, no change
  EXPECT_EQ(v.combined_value(), "2pF");
}

TEST(ParserValueSet, TheTextsOwnUnitWinsOverTheGivenOne) {
  const UnitAndMultiplier mhz = find_unit("MHz");
  struct Case { const char* value; UnitAndMultiplier units; const char* combined; };
  const Case cases[] = {{"5 GHz", mhz, "5GHz"},  {" x ", mhz, "(x) MHz"}, {"a+b", find_unit("pF"), "(a+b) pF"},
                        {"m", find_unit("mOhm"), "(m) mOhm"}, {"7", {}, "7"}};
  for (const Case& c : cases) {
    ParserValue v;
    v.set_value_and_unit_multiplier(c.value, c.units);
    EXPECT_EQ(v.combined_value(), c.combined) << c.value;
  }
  ParserValue v;
  v.set_numeric_value_and_unit_multiplier("  5 GHz ", mhz);  // the numeric form reads no unit, and trims
  EXPECT_EQ(v.combined_value(), "(5 GHz) MHz");
  ASSERT_TRUE(v.set_numeric_value_and_unit_string("  7 ", "MHz", type("freq"), false));
  EXPECT_EQ(v.combined_value(), "7MHz");
  EXPECT_FALSE(v.set_value_and_unit_string("5", "%", type("freq"), false));
  EXPECT_TRUE(v.set_value_and_unit_string("5", "%", type("freq"), true));
  EXPECT_EQ(v.combined_value(), "5%");
}
