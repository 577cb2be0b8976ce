#include <qorin/units.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

using namespace qorin::units;

namespace {

// "name=factor[suffix] ..." for one type, to compare whole rows at once.
std::string row(const UnitType& type) {
  std::string text = type.unit_type_name() + "|" + type.description() + "|" + type.get_mks_unit() +
                     (type.uses_scale_factors() ? "|scaled|" : "|plain|");
  for (const UnitMultiplier& m : type.multipliers()) {
    text += m.unit_name() + (m.suffix() ? std::string(1, m.suffix()) : "-") + " ";
  }
  return text;
}

}  // namespace

TEST(Catalogue, RowsInOrderWithTheirOddities) {
  const char* expected[] = {
      "string|String||plain|",
      "num|Unitless||plain|",
      "freq|Frequency|Hz|scaled|Hz- kHzk MHzM GHzG THzT PHzP ",
      "res|Resistance|Ohm|scaled|mOhmm Ohm- kOhmk MOhmM GOhmG TOhmT ",
      "cond|Conductance|S|scaled|pSp nSn uSu mSm S- ",
      "ind|Inductance|H|scaled|fHf pHp nHn uHu mHm H- ",
      "cap|Capacitance|F|scaled|fFf pFp nFn uFu mFm F- ",
      "lng|Length|meter|scaled|bad unit- mil- in- umu mmm cmc meter- ft- nmn ",
      "time|Time|sec|scaled|fsecf psecp nsecn usecu msecm sec- ",
      "ang|Angle|deg|plain|deg- ",
      "power|Power|W|scaled|pWp nWn uWu mWm W- kWk dBm- dBW- ",
      "volt|Voltage|V|scaled|fVf pVp nVn uVu mVm V- kVk ",
      "cur|Current|A|scaled|fAf pAp nAn uAu mAm A- kAk ",
      "dist|Distance|meter|scaled|meter- km- ft- mi- nmi- ",
      "temp|Temperature|Celsius|plain|Celsius- ",
      "dbg|dB|dB|scaled|dB- ",
      "datarate|Datarate|bps|scaled|bps- kbpsk MbpsM GbpsG TbpsT PbpsP ",
      "pct|Percent|%|scaled|%% ",
  };
  const auto& all = get_all_units();
  ASSERT_EQ(all.size(), std::size(expected));
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(row(all[i]), expected[i]);
    EXPECT_EQ(all[i].get_unit_index(), static_cast<int>(i));
    EXPECT_EQ(all[i].get_legacy_type(), static_cast<int>(i) - 2);
  }
}

TEST(Catalogue, FactorsAreTheDoublesOfTheirDecimalLiterals) {
  // Compared with strtod of the literal, so a factor computed another way
  // (2.54 / 1e5, 1.0 / 1000 * 10, ...) that lands one bit off is caught.
  struct Case { const char* type; const char* unit; const char* literal; };
  const Case cases[] = {
      {"lng", "mil", "2.54e-5"}, {"lng", "in", "0.0254"},  {"lng", "ft", "0.3048"},
      {"lng", "cm", "0.01"},     {"lng", "nm", "1e-9"},    {"lng", "bad unit", "1.0"},
      {"dist", "ft", "0.3048"},  {"dist", "mi", "1609.34"}, {"dist", "nmi", "1852.0"},
      {"cap", "fF", "1e-15"},    {"res", "mOhm", "1e-3"},  {"time", "psec", "1e-12"},
      {"power", "dBm", "0.0"},   {"power", "dBW", "0.0"},  {"power", "kW", "1e3"},
      {"datarate", "Pbps", "1e15"}, {"pct", "%", "0.01"},
  };
  for (const Case& c : cases) {
    const UnitAndMultiplier unit = find_unit_of_type(find_unit_type(c.type), c.unit);
    ASSERT_TRUE(unit.is_valid()) << c.type << " " << c.unit;
    EXPECT_EQ(unit.multiplier()->multipler(), std::strtod(c.literal, nullptr)) << c.unit;
  }
}

TEST(Catalogue, LegacyCodesIndexTheCatalogue) {
  struct Case { int code; const char* type; };
  const Case cases[] = {{-2, "string"}, {0, "freq"}, {8, "power"}, {15, "pct"},
                        {-3, nullptr},  {16, nullptr}, {INT_MIN, nullptr}, {INT_MAX, nullptr}};
  for (const Case& c : cases) {
    const UnitType* type = get_legacy_unit(static_cast<DMUnitE>(c.code));
    if (c.type == nullptr) {
      EXPECT_EQ(type, nullptr) << c.code;
    } else {
      ASSERT_NE(type, nullptr) << c.code;
      EXPECT_EQ(type->unit_type_name(), c.type);
      EXPECT_EQ(type->get_legacy_type(), c.code);
    }
  }
}

TEST(Catalogue, TypeNamesMatchExactly) {
  EXPECT_EQ(find_unit_type("freq"), &get_all_units()[2]);
  EXPECT_EQ(find_unit_type("pct"), &get_all_units()[17]);
  for (const char* miss : {"", "Frequency", "FREQ", "freq ", "fre"}) {
    EXPECT_EQ(find_unit_type(miss), nullptr) << miss;
  }
}

TEST(Catalogue, CopiesAreIndependentValues) {
  const UnitType& cap = *find_unit_type("cap");
  const UnitType copy = cap;
  EXPECT_EQ(copy.get_unit_index(), cap.get_unit_index());
  // Pointer identity is what ties a UnitAndMultiplier to the catalogue.
  EXPECT_TRUE(UnitAndMultiplier(&cap, &cap.multipliers()[1]).multiplier_matches_type());
  EXPECT_FALSE(UnitAndMultiplier(&cap, &copy.multipliers()[1]).multiplier_matches_type());
}
