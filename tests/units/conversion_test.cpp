#include <qorin/units.h>

#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

using namespace qorin::units;

TEST(UnitConversion, ToMksIsAPlainFactorExceptForDbmAndDbw) {
  EXPECT_EQ(convert_parm_value_to_mks_units(2.0, find_unit("GHz")), 2e9);
  EXPECT_EQ(convert_parm_value_to_mks_units(20.0, find_unit("dB")), 20.0);           // no logarithm
  EXPECT_EQ(convert_parm_value_to_mks_units(25.0, find_unit("Celsius")), 25.0);      // no offset
  // The exponent is multiplied by 0.1, and the power of ten is the nearest
  // double on every platform: a whole exponent gives the exact power (10 dBm
  // is 0.01 W, not 0.010000000000000002), any other the correctly rounded one.
  struct Case { double value, dbm_in_w, dbw_in_w; };
  const Case cases[] = {
      {-150.5, 8.91250938133744e-19, 8.91250938133744e-16}, {0.0, 0.001, 1.0}, {10.0, 0.01, 10.0},
      {0.1, 0.0010232929922807535, 1.023292992280754},      {13.0, 0.01995262314968879, 19.952623149688797},
      {33.0, 1.9952623149688797, 1995.262314968881},        {47.3, 53.703179637025244, 53703.17963702522},
      {123.456, 2216154325.959725, 2216154325959.725},      {3100.0, 1e307, HUGE_VAL}, {-3300.0, 0.0, 0.0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(convert_parm_value_to_mks_units(c.value, find_unit("dBm")), c.dbm_in_w) << c.value;
    EXPECT_EQ(convert_parm_value_to_mks_units(c.value, find_unit("dBW")), c.dbw_in_w) << c.value;
  }
  // And back: 10 log10(w) + 30, log10 correctly rounded, down to the
  // smallest subnormal.
  const double watts[][2] = {{2.0, 33.01029995663981},      {0.5, 26.989700043360187}, {0.001, 0.0},
                             {123.456, 50.91512201627772},  {5e-324, -3203.062153431158},
                             {1.7976931348623157e308, 3112.5471555991676}};
  for (const auto& w : watts) {
    double dbm = 0;
    EXPECT_TRUE(convert_parm_value_from_mks_units(w[0], find_unit("dBm"), &dbm));
    EXPECT_EQ(dbm, w[1]) << w[0];
  }
}

// From an MKS unit (factor 1) this is the conversion from MKS units.
TEST(UnitConversion, RefusesPowersAtOrBelowZeroAndFloatOverflow) {
  struct Case { double value; const char* from; const char* to; bool ok; double expected; };
  const Case cases[] = {
      {1.0, "W", "dBm", true, 30.0},    {1.0, "W", "dBW", true, 0.0},      {0.001, "W", "mW", true, 1.0},
      {10.0, "dBm", "mW", true, 10.0},  {1.0, "GHz", "kOhm", true, 1e6},   // types are not checked
      {1e300, "Hz", "kHz", true, 1e297},
      // *result: the input for a power at or below zero, even in W...
      {0.0, "W", "dBm", false, 0.0},    {-1.0, "W", "dBW", false, -1.0},  {-5.0, "mW", "W", false, -5.0},
      // ...and the MKS value past the guard, value > factor * FLT_MAX, which
      // looks at the signed value.
      {1e38, "F", "pF", false, 1e38},   {1e29, "GHz", "fF", false, 1e38}, {-1e38, "F", "pF", true, -1e50},
  };
  for (const Case& c : cases) {
    double r = 0;
    EXPECT_EQ(convert_parm_value_units(c.value, find_unit(c.from), &r, find_unit(c.to)), c.ok) << c.from;
    EXPECT_DOUBLE_EQ(r, c.expected) << c.value << " " << c.from << " to " << c.to;
  }
  double r = -77.0;
  EXPECT_FALSE(convert_parm_value_from_mks_units(-1.0, find_unit("dBm"), &r));
  EXPECT_EQ(r, -77.0);  // untouched
  const double edge = 1e-12 * static_cast<double>(std::numeric_limits<float>::max());
  EXPECT_TRUE(convert_parm_value_from_mks_units(edge, find_unit("pF"), &r));
  EXPECT_FALSE(convert_parm_value_from_mks_units(std::nextafter(edge, 1e300), find_unit("pF"), &r));
}

TEST(UnitConversion, NullUnitsThrowPlainRuntimeErrors) {
  const std::string from_null = "Cannot convert parameter value from null units to mks units.";
  const std::string to_null = "Cannot convert parameter value from mks units to null units.";
  double r = 0;
  const auto error_of = [](auto call) { return qorin::testing::thrown_message<std::runtime_error>(call); };
  EXPECT_EQ(error_of([] { convert_parm_value_to_mks_units(1.0, {find_unit_type("freq"), nullptr}); }), from_null);
  EXPECT_EQ(error_of([&] { convert_parm_value_from_mks_units(1.0, {}, &r); }), to_null);
  EXPECT_EQ(error_of([&] { convert_parm_value_units(1.0, find_unit("Hz"), &r, {}); }), to_null);
  EXPECT_EQ(error_of([&] { convert_parm_value_units(4.5, {}, &r, {}); }), from_null);
  EXPECT_EQ(r, 4.5);  // set before anything can throw
}

TEST(UnitConversion, BatchesGiveTheSingleCallsResultsInPlace) {
  const double values[] = {-150.5, 0.0, 0.1, 13.0, 47.3, 3100.0, -3300.0, 1e-300};
  constexpr std::size_t count = sizeof(values) / sizeof(values[0]);
  for (const char* name : {"dBm", "dBW", "pF", "mi", "Celsius"}) {
    const UnitAndMultiplier unit = find_unit(name);
    double in_place[count];
    std::copy(values, values + count, in_place);
    convert_parm_values_to_mks_units(in_place, in_place, count, unit);
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_EQ(in_place[i], convert_parm_value_to_mks_units(values[i], unit)) << name << " " << values[i];
    }
  }
  // From MKS: stops at the first value the unit cannot hold, and writes
  // nothing from there on.
  const double watts[] = {1.0, 0.001, 0.0, 2.0};
  double out[] = {-1.0, -1.0, -1.0, -1.0};
  EXPECT_EQ(convert_parm_values_from_mks_units(watts, out, 4, find_unit("dBm")), 2u);
  EXPECT_EQ(out[0], 30.0);
  EXPECT_EQ(out[1], 0.0);
  EXPECT_EQ(out[2], -1.0);
  EXPECT_EQ(convert_parm_values_from_mks_units(watts, out, 2, find_unit("mW")), 2u);
  EXPECT_EQ(out[0], 1000.0);
  EXPECT_EQ(qorin::testing::thrown_message<std::runtime_error>([&] { convert_parm_values_to_mks_units(watts, out, 0, {}); }),
            "Cannot convert parameter value from null units to mks units.");
}
