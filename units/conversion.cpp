// Conversion of parameter values between a unit and its type's MKS unit.
// Power is the one logarithmic quantity: dBm and dBW go through powers of ten.
#include "units/decimal_power.h"

#include <qorin/units.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace qorin::units {

namespace {

enum class PowerScale { linear, dBm, dBW };

// Recognised by the legacy code, not the type name, as stored designs do.
PowerScale power_scale(const UnitAndMultiplier& unit) {
  if (unit.type()->get_legacy_type() != DM_UNIT_POWER) return PowerScale::linear;
  const std::string& name = unit.unit_name();
  if (name == "dBm") return PowerScale::dBm;
  if (name == "dBW") return PowerScale::dBW;
  return PowerScale::linear;
}

bool is_power(const UnitAndMultiplier& unit) {
  return unit.type()->get_legacy_type() == DM_UNIT_POWER;
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

double to_mks(double value, const UnitAndMultiplier& unit) {
  // The exponent is multiplied by 0.1, not divided by 10: stored results
  // depend on that last bit. The powers are the library's own, the same on
  // every platform.
  switch (power_scale(unit)) {
    case PowerScale::dBW: return detail::pow10(value * 0.1);
    case PowerScale::dBm: return detail::pow10((value - 30.0) * 0.1);
    case PowerScale::linear: break;
  }
  return value * unit.multiplier()->multipler();
}

bool from_mks(double value, const UnitAndMultiplier& unit, double* result) {
  if (is_power(unit)) {
    // No power unit represents zero or negative power, not even W.
    if (value <= 0.0) return false;
    switch (power_scale(unit)) {
      case PowerScale::dBW: *result = 10.0 * detail::log10(value); return true;
      case PowerScale::dBm: *result = 10.0 * detail::log10(value) + 30.0; return true;
      case PowerScale::linear: break;
    }
  }
  *result = value;
  // Values are handed on as floats downstream; the guard is on the signed
  // value, so large negative values pass.
  const double factor = unit.multiplier()->multipler();
  if (factor < 1.0 && value > factor * static_cast<double>(std::numeric_limits<float>::max())) {
    return false;
  }
  *result = value / factor;
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

bool convert_parm_value_units(double value, UnitAndMultiplier from, double* result,
                              UnitAndMultiplier to) {
  *result = value;
  require_from_units(from);
  const double mks = to_mks(value, from);
  require_to_units(to);
  return from_mks(mks, to, result);
}

void convert_parm_values_to_mks_units(const double* in, double* out, std::size_t count, UnitAndMultiplier unit) {
  require_from_units(unit);
  if (power_scale(unit) != PowerScale::linear) {
    for (std::size_t i = 0; i < count; ++i) out[i] = to_mks(in[i], unit);
    return;
  }
  const double factor = unit.multiplier()->multipler();
  // Four loads, then four stores: -O2 turns each group into vector multiplies
  // (it does not vectorise the plain loop), and reading before writing keeps
  // in-place conversion right. Each element is still the one product.
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    const double a = in[i] * factor, b = in[i + 1] * factor, c = in[i + 2] * factor, d = in[i + 3] * factor;
    out[i] = a;
    out[i + 1] = b;
    out[i + 2] = c;
    out[i + 3] = d;
  }
  for (; i < count; ++i) out[i] = in[i] * factor;
}

std::size_t convert_parm_values_from_mks_units(const double* in, double* out, std::size_t count,
                                               UnitAndMultiplier unit) {
  require_to_units(unit);
  for (std::size_t i = 0; i < count; ++i) {
    double result = 0.0;
    if (!from_mks(in[i], unit, &result)) return i;
    out[i] = result;
  }
  return count;
}

}  // namespace qorin::units
