// The full rows (names, descriptions, MKS units, factors, letters) are
// compared by the tool case units_all; these cases pin what that text cannot.
#include <qorin/units.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

using namespace qorin::units;

TEST(Catalogue, LegacyCodesAndIndexesAreCataloguePositions) {
  const auto& all = get_all_units();
  ASSERT_EQ(all.size(), 18u);
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(all[i].get_unit_index(), i);
    EXPECT_EQ(get_legacy_unit(static_cast<DMUnitE>(i - 2)), &all[i]);
    EXPECT_EQ(all[i].get_legacy_type(), i - 2);
  }
  for (int code : {-3, 16, INT_MIN, INT_MAX}) EXPECT_EQ(get_legacy_unit(static_cast<DMUnitE>(code)), nullptr);
  EXPECT_EQ(find_unit_type("freq"), &all[2]);
  for (const char* miss : {"", "Frequency", "FREQ", "freq "}) EXPECT_EQ(find_unit_type(miss), nullptr) << miss;
}

TEST(UnitLookup, FirstExactMatchInCatalogueOrder) {
  // Factors against strtod of their literals, so one computed another way
  // (2.54 / 1e5, 0.1 * 0.1, ...) that lands one bit off is caught.
  struct Case { const char* name; const char* type; const char* factor; };
  const Case cases[] = {{"MOhm", "res", "1e6"},  {"mOhm", "res", "1e-3"},   {"meter", "lng", "1"},
                        {"ft", "lng", "0.3048"}, {"dB", "dbg", "1"},        {"dBW", "power", "0"},
                        {"%", "pct", "0.01"},    {"bad unit", "lng", "1"},  {"mil", "lng", "2.54e-5"},
                        {"in", "lng", "0.0254"}, {"mi", "dist", "1609.34"}, {"fF", "cap", "1e-15"}};
  for (const Case& c : cases) {
    const UnitAndMultiplier unit = find_unit(c.name);
    ASSERT_TRUE(unit.is_valid()) << c.name;
    EXPECT_EQ(unit.type()->unit_type_name(), c.type) << c.name;
    EXPECT_EQ(unit.multiplier()->multipler(), std::strtod(c.factor, nullptr)) << c.name;
  }
  for (const char* name : {"mohm", "MHZ", " pF", "pF ", "", "dbm", "meters"}) {
    EXPECT_TRUE(find_unit(name).type() == nullptr && find_unit(name).multiplier() == nullptr) << name;
  }
  EXPECT_FALSE(find_unit(nullptr).is_valid());
  // Only a lookup within the type reaches the second "meter" and "ft".
  const UnitType* dist = find_unit_type("dist");
  const UnitAndMultiplier ft = find_unit_of_type(dist, "ft");
  EXPECT_TRUE(ft.type() == dist && ft.multiplier() == &dist->multipliers()[2]);
  EXPECT_FALSE(find_unit_of_type(dist, "mm").is_valid());
  const std::vector<const UnitType*> ft_types = {find_unit_type("lng"), dist};
  EXPECT_EQ(find_unit_types_with("ft"), ft_types);
  EXPECT_TRUE(find_unit_types_with("FT").empty());
  EXPECT_TRUE(find_unit_types_with(std::string("pF\0", 3)).empty());
}

TEST(UnitLookup, MultiplierMatchesTypeByAddress) {
  EXPECT_EQ(UnitAndMultiplier().unit_name(), "");
  EXPECT_EQ(&UnitAndMultiplier().unit_name(), &UnitAndMultiplier().unit_name());  // one shared string
  EXPECT_TRUE(UnitAndMultiplier().multiplier_matches_type());
  EXPECT_TRUE(find_unit("pF").multiplier_matches_type());
  const UnitMultiplier* ghz = find_unit("GHz").multiplier();
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("res"), ghz).multiplier_matches_type());
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("num"), ghz).multiplier_matches_type());
  const UnitType copy = *find_unit_type("cap");  // same names, other addresses
  EXPECT_FALSE(UnitAndMultiplier(find_unit_type("cap"), &copy.multipliers()[1]).multiplier_matches_type());
}
