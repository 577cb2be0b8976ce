#include "units/percent_unit.h"

namespace qorin::units::detail {

const UnitAndMultiplier& percent_unit() {
  static const UnitAndMultiplier percent = [] {
    const UnitType* type = get_legacy_unit(DM_UNIT_PERCENT);
    if (type == nullptr) return UnitAndMultiplier();
    const UnitAndMultiplier found = find_unit_of_type(type, "%");
    return found.is_valid() ? found : UnitAndMultiplier();
  }();
  return percent;
}

}  // namespace qorin::units::detail
