// Conversion of parameter values between a unit and its type's MKS unit.
// Power is the one logarithmic quantity: dBm and dBW go through powers of ten.
#include "units/decimal_power.h"

#include <qorin/units.h>

#include <limits>
#include <stdexcept>

namespace qorin::units {

namespace {

enum class PowerScale { linear, dBm, dBW };

// Recognised by the legacy code, not the type name, as stored designs do.
PowerScale power_scale(const UnitAndMultiplier& unit) {
  if (unit.type()->get_legacy_type() != DM_UNIT_POWER) return PowerScale::linear;
  // Compared letter by letter: this runs once for every value converted.
  const std::string& name = unit.unit_name();
  if (name.size() != 3 || name[0] != 'd' || name[1] != 'B') return PowerScale::linear;
  if (name[2] == 'm') return PowerScale::dBm;
  if (name[2] == 'W') return PowerScale::dBW;
  return PowerScale::linear;
}

void require_from_units(const UnitAndMultiplier& unit) {
  if (!unit.is_valid()) {
    throw std::runtime_error("Cannot convert parameter value from null units to mks units.");
  }
}

void require_to_units(const UnitAndMultiplier& unit) {
  if (!unit.is_valid()) {
    throw std::runtime_error("Cannot convert parameter value from mks units to null units.");
  }
}

// The exponent is multiplied by 0.1, not divided by 10: stored results
// depend on that last bit. The powers are the library's own, the same on
// every platform.
double decibels_to_watts(double value, PowerScale scale) {
  return detail::pow10((scale == PowerScale::dBm ? value - 30.0 : value) * 0.1);
}

// For a positive power.
double watts_to_decibels(double value, PowerScale scale) {
  const double dbw = 10.0 * detail::log10(value);
  return scale == PowerScale::dBm ? dbw + 30.0 : dbw;
}

// How a value comes from MKS into a unit that is a plain factor, and which
// values it refuses.
struct FactorLimits {
  double factor;
  // No power unit represents zero or negative power, not even W.
  bool positive_only;
  // Values are handed on as floats downstream; the guard is on the signed
  // value, so large negative values pass.
  double highest;
};

FactorLimits factor_limits(const UnitAndMultiplier& unit) {
  const double factor = unit.multiplier()->multipler();
  const double highest = factor < 1.0 ? factor * static_cast<double>(std::numeric_limits<float>::max())
                                      : std::numeric_limits<double>::infinity();
  return {factor, unit.type()->get_legacy_type() == DM_UNIT_POWER, highest};
}

double to_mks(double value, const UnitAndMultiplier& unit) {
  const PowerScale scale = power_scale(unit);
  if (scale != PowerScale::linear) return decibels_to_watts(value, scale);
  return value * unit.multiplier()->multipler();
}

bool from_mks(double value, const UnitAndMultiplier& unit, double* result) {
  const PowerScale scale = power_scale(unit);
  if (scale != PowerScale::linear) {
    if (value <= 0.0) return false;
    *result = watts_to_decibels(value, scale);
    return true;
  }
  const FactorLimits limits = factor_limits(unit);
  if (limits.positive_only && value <= 0.0) return false;
  *result = value;
  if (value > limits.highest) return false;
  *result = value / limits.factor;
  return true;
}

}  // namespace

double convert_parm_value_to_mks_units(double value, UnitAndMultiplier unit) {
  require_from_units(unit);
  return to_mks(value, unit);
}

bool convert_parm_value_from_mks_units(double value, UnitAndMultiplier unit, double* result) {
  require_to_units(unit);
  return from_mks(value, unit, result);
}

void convert_parm_values_to_mks_units(const double* in, std::size_t n, UnitAndMultiplier unit, double* out) {
  require_from_units(unit);
  const PowerScale scale = power_scale(unit);
  if (scale != PowerScale::linear) {
    for (std::size_t i = 0; i < n; ++i) out[i] = decibels_to_watts(in[i], scale);
    return;
  }
  const double factor = unit.multiplier()->multipler();
  for (std::size_t i = 0; i < n; ++i) out[i] = in[i] * factor;
}

std::size_t convert_parm_values_from_mks_units(const double* in, std::size_t n, UnitAndMultiplier unit,
                                               double* out) {
  require_to_units(unit);
  std::size_t converted = 0;
  const PowerScale scale = power_scale(unit);
  if (scale != PowerScale::linear) {
    for (std::size_t i = 0; i < n; ++i) {
      const double value = in[i];
      const bool accepted = !(value <= 0.0);  // NaN is converted, as it is singly
      out[i] = accepted ? watts_to_decibels(value, scale) : value;
      converted += accepted;
    }
    return converted;
  }
  // Without branches, so that the compiler can vectorise the loop.
  const FactorLimits limits = factor_limits(unit);
  for (std::size_t i = 0; i < n; ++i) {
    const double value = in[i];
    const bool accepted = !(limits.positive_only && value <= 0.0) && !(value > limits.highest);
    out[i] = accepted ? value / limits.factor : value;
    converted += accepted;
  }
  return converted;
}

bool convert_parm_value_units(double value, UnitAndMultiplier from, double* result,
                              UnitAndMultiplier to) {
  *result = value;
  require_from_units(from);
  const double mks = to_mks(value, from);
  require_to_units(to);
  return from_mks(mks, to, result);
}

}  // namespace qorin::units
