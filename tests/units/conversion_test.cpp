#include <qorin/units.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

using namespace qorin::units;

namespace {

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
  const Case cases[] = {{30.0, "dBm", 1.0}, {0.0, "dBW", 1.0},   {2.0, "GHz", 2e9},
                        {20.0, "dB", 20.0}, {10.0, "dBm", 0.01}, {25.0, "Celsius", 25.0}};
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(convert_parm_value_to_mks_units(c.value, find_unit(c.unit)), c.expected) << c.unit;
  }
}

TEST(UnitConversion, PowerExponentIsMultipliedByAPointOneToTheLastBit) {
  // For 33 dBm, (33 - 30) * 0.1 and (33 - 30) / 10 are different doubles and
  // so are their powers of ten: only the former is right.
  ASSERT_NE(std::pow(10.0, (33.0 - 30.0) * 0.1), std::pow(10.0, (33.0 - 30.0) / 10.0));
  for (double x : {-150.5, -30.0, 0.0, 0.1, 13.0, 33.0, 47.3, 123.456}) {
    EXPECT_EQ(convert_parm_value_to_mks_units(x, find_unit("dBm")), std::pow(10.0, (x - 30.0) * 0.1)) << x;
    EXPECT_EQ(convert_parm_value_to_mks_units(x, find_unit("dBW")), std::pow(10.0, x * 0.1)) << x;
  }
}

TEST(UnitConversion, FromMks) {
  struct Case { double value; const char* unit; bool ok; double expected; };
  const double untouched = -77.0;
  const Case cases[] = {
      {1.0, "dBm", true, 30.0},         {1.0, "dBW", true, 0.0},         {0.001, "mW", true, 1.0},
      {0.0, "dBm", false, untouched},   {-1.0, "dBW", false, untouched}, {0.0, "W", false, untouched},
      {-1.0, "mV", true, -1000.0},      {1e300, "kHz", true, 1e297},
      // Float overflow guard: 1e38 > 1e-12 * FLT_MAX; *result keeps the MKS
      // value. It looks at the signed value.
      {1e38, "pF", false, 1e38},        {-1e38, "pF", true, -1e50},
  };
  for (const Case& c : cases) {
    double r = untouched;
    EXPECT_EQ(convert_parm_value_from_mks_units(c.value, find_unit(c.unit), &r), c.ok) << c.value << c.unit;
    EXPECT_DOUBLE_EQ(r, c.expected) << c.value << " " << c.unit;
  }
  const double edge = 1e-12 * static_cast<double>(std::numeric_limits<float>::max());
  double r = 0;
  EXPECT_TRUE(convert_parm_value_from_mks_units(edge, find_unit("pF"), &r));
  EXPECT_FALSE(convert_parm_value_from_mks_units(std::nextafter(edge, 1e300), find_unit("pF"), &r));
}

TEST(UnitConversion, BetweenUnits) {
  double r = 0;
  EXPECT_TRUE(convert_parm_value_units(10.0, find_unit("dBm"), &r, find_unit("mW")));
  EXPECT_DOUBLE_EQ(r, 10.0);
  EXPECT_TRUE(convert_parm_value_units(1.0, find_unit("GHz"), &r, find_unit("kOhm")));  // types unchecked
  EXPECT_DOUBLE_EQ(r, 1e6);
  // A non-positive power leaves the input; the guard leaves the MKS value.
  EXPECT_FALSE(convert_parm_value_units(-5.0, find_unit("mW"), &r, find_unit("dBm")));
  EXPECT_EQ(r, -5.0);
  EXPECT_FALSE(convert_parm_value_units(1e29, find_unit("GHz"), &r, find_unit("fF")));
  EXPECT_EQ(r, 1e29 * 1e9);
}

TEST(UnitConversion, NullUnitsThrowPlainRuntimeErrors) {
  const std::string from_null = "Cannot convert parameter value from null units to mks units.";
  const std::string to_null = "Cannot convert parameter value from mks units to null units.";
  EXPECT_EQ(message_of([] { convert_parm_value_to_mks_units(1.0, {find_unit_type("freq"), nullptr}); }),
            from_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_from_mks_units(1.0, {}, &r); }), to_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_units(1.0, {}, &r, find_unit("Hz")); }),
            from_null);
  EXPECT_EQ(message_of([] { double r; convert_parm_value_units(1.0, find_unit("Hz"), &r, {}); }), to_null);
  double r = 0;  // set before anything can throw
  EXPECT_THROW(convert_parm_value_units(4.5, {}, &r, {}), std::runtime_error);
  EXPECT_EQ(r, 4.5);
}
