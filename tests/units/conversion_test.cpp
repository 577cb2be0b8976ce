#include <qorin/units.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

using namespace qorin::units;

namespace {

UnitAndMultiplier unit(const char* name) { return find_unit(name); }

std::string message_of(void (*call)()) {
  try {
    call();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "(no exception)";
}

}  // namespace

TEST(UnitConversion, ToMks) {
  struct Case { double value; const char* unit; double expected; };
  const Case cases[] = {
      {30.0, "dBm", 1.0}, {0.0, "dBW", 1.0},   {2.0, "GHz", 2e9},    {20.0, "dB", 20.0},
      {10.0, "dBm", 0.01}, {-1.0, "mm", -1e-3}, {25.0, "Celsius", 25.0}, {1.0, "mil", 2.54e-5},
  };
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(convert_parm_value_to_mks_units(c.value, unit(c.unit)), c.expected) << c.unit;
  }
}

TEST(UnitConversion, PowerExponentIsMultipliedByAPointOneToTheLastBit) {
  // For 33 dBm, (33 - 30) * 0.1 and (33 - 30) / 10 are different doubles and
  // so are their powers of ten: only the former is right.
  const double v = 33.0;
  ASSERT_NE(std::pow(10.0, (v - 30.0) * 0.1), std::pow(10.0, (v - 30.0) / 10.0));
  for (double x : {-150.5, -30.0, 0.0, 0.1, 13.0, 33.0, 47.3, 123.456}) {
    EXPECT_EQ(convert_parm_value_to_mks_units(x, unit("dBm")), std::pow(10.0, (x - 30.0) * 0.1)) << x;
    EXPECT_EQ(convert_parm_value_to_mks_units(x, unit("dBW")), std::pow(10.0, x * 0.1)) << x;
  }
}

TEST(UnitConversion, FromMks) {
  struct Case { double value; const char* unit; bool ok; double expected; };
  const double untouched = -77.0;
  const Case cases[] = {
      {1.0, "dBm", true, 30.0},      {1.0, "dBW", true, 0.0},        {0.001, "mW", true, 1.0},
      {0.0, "dBm", false, untouched}, {-1.0, "dBW", false, untouched}, {0.0, "W", false, untouched},
      {-1.0, "mW", false, untouched}, {-1.0, "mV", true, -1000.0},     {2e9, "GHz", true, 2.0},
      // Overflow guard: 1e38 > 1e-12 * FLT_MAX; *result keeps the MKS value.
      {1e38, "pF", false, 1e38},     {-1e38, "pF", true, -1e50},     {1e300, "kHz", true, 1e297},
  };
  for (const Case& c : cases) {
    double r = untouched;
    EXPECT_EQ(convert_parm_value_from_mks_units(c.value, unit(c.unit), &r), c.ok) << c.value << c.unit;
    EXPECT_DOUBLE_EQ(r, c.expected) << c.value << " " << c.unit;
  }
  const double edge = 1e-12 * static_cast<double>(std::numeric_limits<float>::max());
  double r = 0;
  EXPECT_TRUE(convert_parm_value_from_mks_units(edge, unit("pF"), &r));
  EXPECT_FALSE(convert_parm_value_from_mks_units(std::nextafter(edge, 1e300), unit("pF"), &r));
}

TEST(UnitConversion, BetweenUnits) {
  double r = 0;
  EXPECT_TRUE(convert_parm_value_units(10.0, unit("dBm"), &r, unit("mW")));
  EXPECT_DOUBLE_EQ(r, 10.0);
  EXPECT_TRUE(convert_parm_value_units(1.0, unit("W"), &r, unit("dBm")));
  EXPECT_DOUBLE_EQ(r, 30.0);
  // Types are not checked here.
  EXPECT_TRUE(convert_parm_value_units(1.0, unit("GHz"), &r, unit("kOhm")));
  EXPECT_DOUBLE_EQ(r, 1e6);
  // A non-positive power leaves the input; the guard leaves the MKS value.
  EXPECT_FALSE(convert_parm_value_units(-5.0, unit("mW"), &r, unit("dBm")));
  EXPECT_EQ(r, -5.0);
  EXPECT_FALSE(convert_parm_value_units(1e29, unit("GHz"), &r, unit("fF")));
  EXPECT_EQ(r, 1e38);
}

TEST(UnitConversion, NullUnitsThrowPlainRuntimeErrors) {
  const std::string from_null = "Cannot convert parameter value from null units to mks units.";
  const std::string to_null = "Cannot convert parameter value from mks units to null units.";
  EXPECT_EQ(message_of([] { convert_parm_value_to_mks_units(1.0, {}); }), from_null);
  EXPECT_EQ(message_of([] { convert_parm_value_to_mks_units(1.0, {find_unit_type("freq"), nullptr}); }),
            from_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_from_mks_units(1.0, {}, &r); }), to_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_units(1.0, {}, &r, find_unit("Hz")); }),
            from_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_units(1.0, find_unit("Hz"), &r, {}); }),
            to_null);
  // *result is set before anything can throw.
  double r = 0;
  EXPECT_THROW(convert_parm_value_units(4.5, {}, &r, {}), std::runtime_error);
  EXPECT_EQ(r, 4.5);
}
