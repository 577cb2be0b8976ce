#include <qorin/units.h>

#include <gtest/gtest.h>

using namespace qorin::units;

TEST(UnitLookup, FirstExactMatchInCatalogueOrder) {
  struct Case { const char* name; const char* type; double factor; };
  const Case cases[] = {
      {"MOhm", "res", 1e6},  {"mOhm", "res", 1e-3},    {"meter", "lng", 1.0},  {"ft", "lng", 0.3048},
      {"dB", "dbg", 1.0},    {"dBW", "power", 0.0},    {"%", "pct", 0.01},     {"bad unit", "lng", 1.0},
      {"nmi", "dist", 1852.0},
  };
  for (const Case& c : cases) {
    const UnitAndMultiplier unit = find_unit(c.name);
    ASSERT_TRUE(unit.is_valid()) << c.name;
    EXPECT_EQ(unit.type()->unit_type_name(), c.type) << c.name;
    EXPECT_EQ(unit.unit_name(), c.name);
    EXPECT_EQ(unit.multiplier()->multipler(), c.factor) << c.name;
    EXPECT_TRUE(unit.multiplier_matches_type()) << c.name;
  }
  for (const char* name : {"mohm", "MHZ", " pF", "pF ", "", "k", "dbm", "bad", "meters"}) {
    const UnitAndMultiplier unit = find_unit(name);
    EXPECT_TRUE(unit.type() == nullptr && unit.multiplier() == nullptr) << name;
  }
  EXPECT_FALSE(find_unit(nullptr).is_valid());
}

TEST(UnitLookup, WithinOneTypeReachesTheSecondMeterAndFt) {
  const UnitType* dist = find_unit_type("dist");
  for (const char* name : {"meter", "ft"}) {
    const UnitAndMultiplier unit = find_unit_of_type(dist, name);
    EXPECT_EQ(unit.type(), dist);
    EXPECT_NE(unit.multiplier(), find_unit(name).multiplier()) << name;
  }
  EXPECT_FALSE(find_unit_of_type(dist, "mm").is_valid());
}

TEST(UnitLookup, UnitNameAndTypeConsistency) {
  EXPECT_EQ(&UnitAndMultiplier().unit_name(), &UnitAndMultiplier().unit_name());
  EXPECT_EQ(UnitAndMultiplier().unit_name(), "");
  EXPECT_TRUE(UnitAndMultiplier().multiplier_matches_type());
  const UnitMultiplier* ghz = find_unit("GHz").multiplier();
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("res"), ghz).multiplier_matches_type());
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("num"), ghz).multiplier_matches_type());
}
