#include <qorin/units.h>

#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
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
  // smallest subnormal; infinite power is infinite dBm.
  const double watts[][2] = {{2.0, 33.01029995663981},      {0.5, 26.989700043360187}, {0.001, 0.0},
                             {123.456, 50.91512201627772},  {5e-324, -3203.062153431158},
                             {1.7976931348623157e308, 3112.5471555991676}, {HUGE_VAL, HUGE_VAL}};
  for (const auto& w : watts) {
    double dbm = 0;
    EXPECT_TRUE(convert_parm_value_from_mks_units(w[0], find_unit("dBm"), &dbm));
    EXPECT_EQ(dbm, w[1]) << w[0];
  }
}

// Below 2^-1022 a double keeps fewer bits: the power is rounded once, to
// those, not first to 53 bits and then again (which gave 6.3095734448012744e-309).
TEST(UnitConversion, SubnormalWattsAreRoundedOnce) {
  const UnitAndMultiplier dbm = find_unit("dBm");
  EXPECT_EQ(convert_parm_value_to_mks_units(-3052.0, dbm), 6.3095734448012695e-309);
  EXPECT_EQ(convert_parm_value_to_mks_units(-3062.7, dbm), 5.3703179637027769e-310);
  EXPECT_EQ(convert_parm_value_to_mks_units(-3203.0, dbm), 4.9406564584124654e-324);  // 10^-323.3: the smallest
  EXPECT_EQ(convert_parm_value_to_mks_units(-3208.0, dbm), 0.0);                     // below half of it
  EXPECT_EQ(convert_parm_value_to_mks_units(3112.5, dbm), 1.7782794100389228e308);
  EXPECT_EQ(convert_parm_value_to_mks_units(3112.6, dbm), HUGE_VAL);                 // past DBL_MAX
  EXPECT_EQ(convert_parm_value_to_mks_units(3120.0, dbm), HUGE_VAL);                 // 10^309
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

std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

// Each value of a batch gets the bits the single conversion gives it, also
// where the plain-factor loop runs vectorised; a refused value is copied.
TEST(UnitConversion, BatchesMatchSingleConversionsBitForBit) {
  const double values[] = {0.0,   -0.0,     1.0,  -1.0,     30.0,     0.1,       47.3,     -150.5,
                           1e-310, 5e-324,  1e38, -1e38,    3.5e38,   1e300,     -3300.0,  3112.6,
                           HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()};
  constexpr std::size_t n = sizeof values / sizeof values[0];
  for (const char* name : {"dBm", "dBW", "W", "mW", "kW", "pF", "GHz", "dB", "%"}) {
    const UnitAndMultiplier unit = find_unit(name);
    double to_mks[n], from_mks[n];
    convert_parm_values_to_mks_units(values, n, unit, to_mks);
    const std::size_t converted = convert_parm_values_from_mks_units(values, n, unit, from_mks);
    std::size_t converted_singly = 0;
    for (std::size_t i = 0; i < n; ++i) {
      EXPECT_EQ(bits_of(to_mks[i]), bits_of(convert_parm_value_to_mks_units(values[i], unit))) << name << " " << values[i];
      double single = values[i];
      converted_singly += convert_parm_value_from_mks_units(values[i], unit, &single);
      EXPECT_EQ(bits_of(from_mks[i]), bits_of(single)) << name << " " << values[i];
    }
    EXPECT_EQ(converted, converted_singly) << name;
  }
}

TEST(UnitConversion, BatchesWorkInPlaceAndCheckUnitsBeforeWriting) {
  double values[] = {1.0, 0.0, 0.01};
  EXPECT_EQ(convert_parm_values_from_mks_units(values, 3, find_unit("dBm"), values), 2u);
  EXPECT_EQ(values[0], 30.0);
  EXPECT_EQ(values[1], 0.0);  // refused, copied
  EXPECT_EQ(values[2], 10.0);
  convert_parm_values_to_mks_units(values, 3, find_unit("dBm"), values);
  EXPECT_EQ(values[0], 1.0);
  EXPECT_EQ(values[1], 0.001);
  EXPECT_EQ(values[2], 0.01);
  EXPECT_EQ(convert_parm_values_from_mks_units(nullptr, 0, find_unit("W"), nullptr), 0u);

  double out = -7.0;
  const auto error_of = [](auto call) { return qorin::testing::thrown_message<std::runtime_error>(call); };
  EXPECT_EQ(error_of([&] { convert_parm_values_to_mks_units(values, 1, {}, &out); }),
            "Cannot convert parameter value from null units to mks units.");
  EXPECT_EQ(error_of([&] { convert_parm_values_from_mks_units(values, 0, {find_unit_type("power"), nullptr}, &out); }),
            "Cannot convert parameter value from mks units to null units.");
  EXPECT_EQ(out, -7.0);
}
