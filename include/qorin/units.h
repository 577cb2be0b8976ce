// Units of measure: the catalogue of unit types (freq, res, cap, power ...)
// with their named units, and conversion of values to and from the types'
// MKS units.
//
// The catalogue is built when the library loads and never changes, so the
// pointers it hands out (UnitType*, UnitMultiplier*) stay valid for the
// library's life and may be read from any thread. Lookups scan it front to
// back and the first match wins; names are case-sensitive. A failed lookup
// gives a null pointer or an invalid UnitAndMultiplier; conversions throw
// std::runtime_error only for an invalid one (type or unit missing).
//
// Start with find_unit_type and find_unit_of_type, then
// convert_parm_value_to_mks_units.
//
// Example:
//   auto ghz = qorin::units::find_unit("GHz");              // (freq, GHz)
//   qorin::units::convert_parm_value_to_mks_units(2.0, ghz)  => 2e9
//   auto dbm = qorin::units::find_unit("dBm");
//   qorin::units::convert_parm_value_to_mks_units(30.0, dbm) => 1  (watt)
#pragma once

#include <qorin/export.h>

#include <cstddef>
#include <string>
#include <vector>

// The older numeric unit codes: catalogue position minus 2 (-2 string ...
// 15 percent). The underlying type is fixed so that callers may pass any
// code and get_legacy_unit can refuse it.
enum DMUnitE : int {
  DM_UNIT_STRING = -2,
  DM_UNIT_UNITLESS = -1,
  DM_UNIT_FREQUENCY = 0,
  DM_UNIT_RESISTANCE = 1,
  DM_UNIT_CONDUCTANCE = 2,
  DM_UNIT_INDUCTANCE = 3,
  DM_UNIT_CAPACITANCE = 4,
  DM_UNIT_LENGTH = 5,
  DM_UNIT_TIME = 6,
  DM_UNIT_ANGLE = 7,
  DM_UNIT_POWER = 8,
  DM_UNIT_VOLTAGE = 9,
  DM_UNIT_CURRENT = 10,
  DM_UNIT_DISTANCE = 11,
  DM_UNIT_TEMPERATURE = 12,
  DM_UNIT_DB = 13,
  DM_UNIT_DATARATE = 14,
  DM_UNIT_PERCENT = 15,
};

namespace qorin::units {

// One named unit: its spelling, its factor to the type's MKS unit, and the
// bare scale letter that stands for it (0 when none).
class QORIN_EXPORT UnitMultiplier {
 public:
  UnitMultiplier(const char* name, double multiplier, char suffix);

  const std::string& unit_name() const { return name_; }
  // Spelled without the second "i": callers use this name.
  double multipler() const { return multiplier_; }
  char suffix() const { return suffix_; }

 private:
  std::string name_;
  double multiplier_;
  char suffix_;
};

// One quantity: frequency, resistance, ... with its units in catalogue order.
class QORIN_EXPORT UnitType {
 public:
  UnitType(DMUnitE legacy, const char* unit_type_name, const char* description,
           const char* mks_unit, bool uses_scale_factors,
           const std::vector<UnitMultiplier>& multipliers);

  // The catalogue position, legacy code + 2 (copies carry it).
  int get_unit_index() const { return unit_index_; }
  DMUnitE get_legacy_type() const { return legacy_; }
  bool uses_scale_factors() const { return uses_scale_factors_; }
  const std::string& unit_type_name() const { return unit_type_name_; }
  const std::string& description() const { return description_; }
  const std::string& get_mks_unit() const { return mks_unit_; }
  const std::vector<UnitMultiplier>& multipliers() const { return multipliers_; }

 private:
  int unit_index_;
  DMUnitE legacy_;
  bool uses_scale_factors_;
  std::string unit_type_name_;
  std::string description_;
  std::string mks_unit_;
  std::vector<UnitMultiplier> multipliers_;
};

// A chosen unit: two non-owning pointers into the catalogue, null by default.
class QORIN_EXPORT UnitAndMultiplier {
 public:
  UnitAndMultiplier() = default;
  UnitAndMultiplier(const UnitType* type, const UnitMultiplier* multiplier)
      : type_(type), multiplier_(multiplier) {}

  const UnitType* type() const { return type_; }
  const UnitMultiplier* multiplier() const { return multiplier_; }
  void set_multiplier(const UnitMultiplier* multiplier) { multiplier_ = multiplier; }
  // Both pointers set.
  bool is_valid() const { return type_ != nullptr && multiplier_ != nullptr; }
  // The multiplier's name, or a shared empty string when none is set.
  const std::string& unit_name() const;
  // True when no multiplier is set or the multiplier is one of the type's own
  // catalogue entries (compared by address: a copied UnitMultiplier never matches).
  bool multiplier_matches_type() const;

 private:
  const UnitType* type_ = nullptr;
  const UnitMultiplier* multiplier_ = nullptr;
};

// The whole catalogue, 18 types in their fixed order.
QORIN_EXPORT const std::vector<UnitType>& get_all_units();
// Entry e + 2, or null outside the catalogue.
QORIN_EXPORT const UnitType* get_legacy_unit(DMUnitE e);
// The first type named exactly `name` ("freq"), or null.
QORIN_EXPORT const UnitType* find_unit_type(const std::string& name);

// Every type that has a unit named exactly `name`, in catalogue order: a
// name may stand in several («ft» in lng and dist).
//
// Example:
//   find_unit_types_with("ft")  => {lng, dist}    find_unit_types_with("FT") => {}
QORIN_EXPORT std::vector<const UnitType*> find_unit_types_with(const std::string& name);

// The first unit of the catalogue named exactly `name` (case-sensitive), or an
// invalid result. "meter" and "ft" resolve to the length type, which comes
// before distance.
QORIN_EXPORT UnitAndMultiplier find_unit(const char* name);
// The unit named `name` within `type` only. Neither may be null.
QORIN_EXPORT UnitAndMultiplier find_unit_of_type(const UnitType* type, const char* name);

// value in `unit` => MKS. dBm and dBW are logarithmic (10^((v - 30) * 0.1),
// 10^(v * 0.1)); every other unit is a plain factor. Null units throw
// std::runtime_error "Cannot convert parameter value from null units to mks units.".
QORIN_EXPORT double convert_parm_value_to_mks_units(double value, UnitAndMultiplier unit);
// MKS => `unit`. False for a non-positive power (any power unit; *result
// untouched) and when a factor below 1 would overflow a float (*result holds
// the MKS value). Null units throw "Cannot convert parameter value from mks
// units to null units.".
QORIN_EXPORT bool convert_parm_value_from_mks_units(double value, UnitAndMultiplier unit, double* result);
// Many values of one unit: out[i] = convert_parm_value_to_mks_units(in[i], unit),
// bit for bit, for i < n; out may be in. A plain factor is one multiplication
// loop. Null units throw as the single conversion does, before anything is
// written, also for n = 0.
//
// Example: in {0.0, 10.0, 30.0} dBm => out {0.001, 0.01, 1.0}
QORIN_EXPORT void convert_parm_values_to_mks_units(const double* in, std::size_t n, UnitAndMultiplier unit,
                                                    double* out);
// Many MKS values into `unit`, each as convert_parm_value_from_mks_units
// converts it. A refused value (a power at or below zero, a float overflow)
// is copied to out unchanged, which is what the single conversion leaves in
// a result that held the input. Returns how many were converted (n when all
// were); out may be in.
//
// Example: in {1.0, 0.0, 0.01} W to dBm => out {30.0, 0.0, 10.0}, returns 2
QORIN_EXPORT std::size_t convert_parm_values_from_mks_units(const double* in, std::size_t n,
                                                            UnitAndMultiplier unit, double* out);

// `from` => MKS => `to`. Types are not checked: 1 GHz to kOhm gives 1e6.
QORIN_EXPORT bool convert_parm_value_units(double value, UnitAndMultiplier from, double* result,
                                           UnitAndMultiplier to);

}  // namespace qorin::units
