#include <qorin/parser.h>

#include <gtest/gtest.h>

using qorin::parser::ParserValue;
using namespace qorin::units;

namespace {

const UnitType* type(const char* name) { return name ? find_unit_type(name) : nullptr; }

}  // namespace

TEST(ParserValueParse, SplitsValueAndUnit) {
  struct Case {
    const char* text; const char* type; bool allow_percent; bool allow_any_unit;
    const char* value; const char* unit; const char* combined;  // unit "": no multiplier
  };
  const Case cases[] = {
      // The first-match walk: "Hz" leaves "1k", refused, then "kHz" leaves "1".
      {"1kHz", "freq", false, false, "1", "kHz", "1kHz"},
      {"1 k", "freq", false, false, "1", "kHz", "1kHz"},
      {"  1  kHz  ", "freq", false, false, "1", "kHz", "1kHz"},
      {"1 m", "res", false, false, "1", "mOhm", "1mOhm"},
      {"1 M", "res", false, false, "1", "MOhm", "1MOhm"},
      // "mm" matches by its letter first and is refused, "nm" follows later.
      {"3 nm", "lng", false, false, "3", "nm", "3nm"},
      {"1 bad unit", "lng", false, false, "1", "bad unit", "1bad unit"},
      {"x_1 GHz", "freq", false, false, "x_1", "GHz", "x_1GHz"},
      {"x_1GHz", "freq", false, false, "x_1GHz", "", "x_1GHz"},
      {"\"abc\" pF", "cap", false, false, "\"abc\"", "pF", "\"abc\"pF"},
      {"\"abc\"pF", "cap", false, false, "\"abc\"", "pF", "\"abc\"pF"},
      {"file{a.txt} Hz", "freq", false, false, "file{a.txt}", "Hz", "file{a.txt}Hz"},
      {"(a+b) pF", "cap", false, false, "a+b", "pF", "(a+b) pF"},
      {"a+b pF", "cap", false, false, "a+b pF", "", "a+b pF"},
      {"pF", "cap", false, false, "", "pF", "pF"},
      {"2.5", "freq", false, false, "2.5", "", "2.5"},
      {"2.5 deg", "ang", false, false, "2.5", "deg", "2.5"},
      {"1kHz", nullptr, false, false, "1kHz", "", "1kHz"},
      // Power: lower-case "dbm", and the dbmtow/dbwtow forms read back.
      {"10 dbm", "power", false, false, "10", "dBm", "dbmtow(10)"},
      {"10dBW", "power", false, false, "10", "dBW", "dbwtow(10)"},
      {"10 m", "power", false, false, "10", "mW", "10mW"},
      {"dbmtow(10)", "power", false, false, "10", "dBm", "dbmtow(10)"},
      {" dbwtow ( -3 ) ", "power", false, false, "-3", "dBW", "dbwtow(-3)"},
      {"dbmtow()", "power", false, false, "", "dBm", "dbmtow()"},
      {"dbmtow(a+b)", "power", false, false, "a+b", "dBm", "dbmtow(a+b)"},
      {"dbmtow10", "power", false, false, "dbmtow10", "", "dbmtow10"},
      {"dbmtow_gain", "power", false, false, "dbmtow_gain", "", "dbmtow_gain"},
      {"DBMTOW(10)", "power", false, false, "DBMTOW(10)", "", "DBMTOW(10)"},
      {"dbmtow(10)", "cap", false, false, "dbmtow(10)", "", "dbmtow(10)"},
      // Percent first, then any unit in catalogue order, then the type.
      {"5 %", "cap", true, false, "5", "%", "5%"},
      {"5 %", "cap", false, false, "5 %", "", "5 %"},
      {"5 pF", nullptr, false, true, "5", "pF", "5pF"},
      {"5 ft", "dist", false, true, "5", "ft", "5ft"},
      {"5 m", "lng", false, true, "5", "mOhm", "5mOhm"},
  };
  for (const Case& c : cases) {
    ParserValue v;
    v.set_value_with_optional_unit_suffix(c.text, type(c.type), c.allow_percent, c.allow_any_unit);
    EXPECT_EQ(v.value(), c.value) << c.text;
    EXPECT_EQ(v.units().unit_name(), c.unit) << c.text;
    EXPECT_EQ(v.combined_value(), c.combined) << c.text;
  }
}

TEST(ParserValueParse, WhatUnitsAValueCarries) {
  ParserValue v;
  v.set_value_with_optional_unit_suffix("5 ft", type("dist"), false, true);
  EXPECT_EQ(v.unit_type(), type("lng"));  // the first "ft" of the catalogue
  v.set_value_with_optional_unit_suffix("2.5", type("freq"), false, false);
  EXPECT_EQ(v.unit_type(), type("freq"));
  EXPECT_EQ(v.units().multiplier(), nullptr);
  v.set_value_with_optional_unit_suffix("dbmtow(1)", type("power"), false, false);
  EXPECT_EQ(v.units().multiplier(), find_unit("dBm").multiplier());
}

TEST(ParserValueParse, DbmtowFlagStartsOnAndSwitchesTheForm) {
  ParserValue v;
  EXPECT_TRUE(v.uses_dbmtow_functions());
  EXPECT_EQ(v.combined_value(), "");
  v.set_value_with_optional_unit_suffix("dbmtow(10)", type("power"), false, false);
  v.set_use_dbmtow_functions(false);
  EXPECT_EQ(v.combined_value(), "10dBm");
  v.set_value_with_optional_unit_suffix("(a) dBW", type("power"), false, false);
  EXPECT_EQ(v.combined_value(), "(a) dBW");
  v.set_use_dbmtow_functions(true);
  EXPECT_EQ(v.combined_value(), "dbwtow(a)");
}

TEST(ParserValueParse, UnitWords) {
  struct Case { const char* text; const char* type; bool allow_percent; bool found; const char* unit; };
  const Case cases[] = {
      {"k", "freq", false, true, "kHz"}, {"kHz", "res", false, false, ""}, {"M", "res", false, true, "MOhm"},
      {"ft", nullptr, false, true, "ft"}, {"dbm", "power", false, true, "dBm"}, {"dbm", nullptr, false, false, ""},
      {"%", "cap", true, true, "%"},     {"%", "cap", false, false, ""},    {"None", "freq", false, true, ""},
      {"", "ang", false, true, "deg"},   {"", "freq", false, false, ""},    {"", "num", false, false, ""},
      {"Hz ", "freq", false, false, ""},
  };
  for (const Case& c : cases) {
    UnitAndMultiplier out(type("cap"), nullptr);
    EXPECT_EQ(ParserValue::find_unit(&out, c.text, type(c.type), c.allow_percent), c.found) << c.text;
    EXPECT_EQ(out.unit_name(), c.unit) << c.text;
  }
  UnitAndMultiplier out;
  ASSERT_TRUE(ParserValue::find_unit(&out, "ft", nullptr, false));
  EXPECT_EQ(out.type(), type("lng"));
  ASSERT_TRUE(ParserValue::find_unit(&out, "None", type("freq"), false));
  EXPECT_EQ(out.type(), type("freq"));
  EXPECT_FALSE(ParserValue::find_unit(&out, std::string("pF\0x", 4), nullptr, false));
}

TEST(ParserValueParse, QuotedStringsAndVariableNames) {
  struct Case { const char* text; bool expected; };
  const Case quoted[] = {
      {"'it\\'s'", true}, {"'it's'", false}, {"\"a\"\"b\"", true}, {"\"a\"b\"", false},
      {"\"a\\\"b\"", true}, {"  'x'  ", true}, {"'", true}, {"\"\"", true}, {"   ", false},
      {"'a\"", false}, {"\"a\"\"", false}, {"\t'x'", false}, {"\"\"\"\"", true},
  };
  for (const Case& c : quoted) EXPECT_EQ(ParserValue::is_quoted_string(c.text), c.expected) << c.text;
  const Case names[] = {{"x", true}, {"_", true}, {"A9_z", true}, {"", false},  {"1x", false},
                        {"x y", false}, {"x-1", false}, {" x", false}, {"\xc3\xa9", false}};
  for (const Case& c : names) EXPECT_EQ(ParserValue::is_valid_variable_name(c.text), c.expected) << c.text;
}
