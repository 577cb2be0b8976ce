#include <qorin/units.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace qorin::units;

TEST(UnitLookup, FirstExactMatchInCatalogueOrder) {
  struct Case { const char* name; const char* type; double factor; };
  const Case cases[] = {
      {"MOhm", "res", 1e6},  {"mOhm", "res", 1e-3}, {"meter", "lng", 1.0},
      {"ft", "lng", 0.3048}, {"dB", "dbg", 1.0},    {"dBm", "power", 0.0},
      {"dBW", "power", 0.0}, {"%", "pct", 0.01},    {"bad unit", "lng", 1.0},
      {"nmi", "dist", 1852.0}, {"Celsius", "temp", 1.0},
  };
  for (const Case& c : cases) {
    const UnitAndMultiplier unit = find_unit(c.name);
    ASSERT_TRUE(unit.is_valid()) << c.name;
    EXPECT_EQ(unit.type()->unit_type_name(), c.type) << c.name;
    EXPECT_EQ(unit.unit_name(), c.name);
    EXPECT_EQ(unit.multiplier()->multipler(), c.factor) << c.name;
    EXPECT_TRUE(unit.multiplier_matches_type()) << c.name;
  }
}

TEST(UnitLookup, NoFuzzyMatches) {
  for (const char* name : {"mohm", "MHZ", " pF", "pF ", "", "k", "dbm", "bad", "meters"}) {
    const UnitAndMultiplier unit = find_unit(name);
    EXPECT_EQ(unit.type(), nullptr) << name;
    EXPECT_EQ(unit.multiplier(), nullptr) << name;
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
  EXPECT_EQ(UnitAndMultiplier().unit_name(), "");
  EXPECT_EQ(&UnitAndMultiplier().unit_name(), &UnitAndMultiplier().unit_name());
  EXPECT_TRUE(UnitAndMultiplier().multiplier_matches_type());
  const UnitAndMultiplier ghz = find_unit("GHz");
  // A multiplier of another type, and a type without multipliers.
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("res"), ghz.multiplier()).multiplier_matches_type());
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("num"), ghz.multiplier()).multiplier_matches_type());
  UnitAndMultiplier changed = ghz;
  changed.set_multiplier(nullptr);
  EXPECT_EQ(changed.type(), ghz.type());
  EXPECT_FALSE(changed.is_valid());
}

TEST(UnitLookup, ConcurrentLookupsAgree) {
  const UnitAndMultiplier expected = find_unit("nmi");
  std::vector<std::thread> threads;
  std::vector<int> mismatches(4, 0);
  for (int& count : mismatches) {
    threads.emplace_back([&count, expected] {
      for (int i = 0; i < 2000; ++i) {
        const UnitAndMultiplier unit = find_unit("nmi");
        if (unit.multiplier() != expected.multiplier() || unit.unit_name() != "nmi") ++count;
      }
    });
  }
  for (std::thread& t : threads) t.join();
  for (int count : mismatches) EXPECT_EQ(count, 0);
}
