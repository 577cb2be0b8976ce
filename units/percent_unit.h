// The percent unit that percent-aware readers try before any other: the "%"
// multiplier of the percent quantity, catalogue entry DM_UNIT_PERCENT + 2.
// Internal to the library.
#pragma once

#include <qorin/units.h>

namespace qorin::units::detail {

// Looked up once, on first use. Both pointers are null when the catalogue
// has no such entry or the entry has no multiplier named exactly "%".
//
// Example:
//   percent_unit().unit_name() => "%"    percent_unit().type()->unit_type_name() => "Percent"
const UnitAndMultiplier& percent_unit();

}  // namespace qorin::units::detail
