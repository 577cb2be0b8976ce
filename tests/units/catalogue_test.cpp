// The full rows (names, descriptions, MKS units, factors, letters) are
// compared by the tool case units_all; these cases pin what that text cannot.
#include <qorin/units.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

using namespace qorin::units;

TEST(Catalogue, FactorsAreTheDoublesOfTheirDecimalLiterals) {
  // Against strtod of the literal, so a factor computed another way
  // (2.54 / 1e5, 0.1 * 0.1, ...) that lands one bit off is caught.
  struct Case { const char* type; const char* unit; const char* literal; };
  const Case cases[] = {
      {"lng", "mil", "2.54e-5"}, {"lng", "in", "0.0254"},     {"lng", "ft", "0.3048"},
      {"lng", "cm", "0.01"},     {"lng", "nm", "1e-9"},       {"dist", "ft", "0.3048"},
      {"dist", "mi", "1609.34"}, {"cap", "fF", "1e-15"},      {"res", "mOhm", "1e-3"},
      {"time", "psec", "1e-12"}, {"power", "dBm", "0.0"},     {"pct", "%", "0.01"},
  };
  for (const Case& c : cases) {
    const UnitAndMultiplier unit = find_unit_of_type(find_unit_type(c.type), c.unit);
    ASSERT_TRUE(unit.is_valid()) << c.type << " " << c.unit;
    EXPECT_EQ(unit.multiplier()->multipler(), std::strtod(c.literal, nullptr)) << c.unit;
  }
}

TEST(Catalogue, LegacyCodesAndIndexesAreCataloguePositions) {
  const auto& all = get_all_units();
  ASSERT_EQ(all.size(), 18u);
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(all[i].get_unit_index(), i);
    EXPECT_EQ(get_legacy_unit(static_cast<DMUnitE>(i - 2)), &all[i]);
    EXPECT_EQ(all[i].get_legacy_type(), i - 2);
  }
  EXPECT_EQ(get_legacy_unit(DM_UNIT_POWER)->unit_type_name(), "power");
  for (int code : {-3, 16, INT_MIN, INT_MAX}) {
    EXPECT_EQ(get_legacy_unit(static_cast<DMUnitE>(code)), nullptr) << code;
  }
}

TEST(Catalogue, TypeNamesMatchExactly) {
  EXPECT_EQ(find_unit_type("freq"), &get_all_units()[2]);
  for (const char* miss : {"", "Frequency", "FREQ", "freq ", "fre"}) {
    EXPECT_EQ(find_unit_type(miss), nullptr) << miss;
  }
}

TEST(Catalogue, CopiesAreNotFoundByAddress) {
  const UnitType& cap = *find_unit_type("cap");
  const UnitType copy = cap;
  EXPECT_EQ(copy.get_unit_index(), cap.get_unit_index());
  EXPECT_TRUE(UnitAndMultiplier(&cap, &cap.multipliers()[1]).multiplier_matches_type());
  EXPECT_FALSE(UnitAndMultiplier(&cap, &copy.multipliers()[1]).multiplier_matches_type());
}
