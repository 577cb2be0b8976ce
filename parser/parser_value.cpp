// ParserValue's setters, rescaling and the canonical text.
#include "parser/value_forms.h"
#include "units/percent_unit.h"

#include <qorin/parser.h>
#include <qorin/text.h>

#include <cmath>
#include <stdexcept>

namespace qorin::parser {

using units::UnitAndMultiplier;

void ParserValue::set_unit_multiplier(UnitAndMultiplier units) {
  units_ = units;
  update_combined_value();
}

void ParserValue::set_use_dbmtow_functions(bool use) {
  use_dbmtow_functions_ = use;
  update_combined_value();
}

void ParserValue::reformat() { update_combined_value(); }

bool ParserValue::is_number() const { return isValidNumber(value_); }

void ParserValue::assign_value_and_units(std::string_view value, UnitAndMultiplier units) {
  // "(x) unit" is how the canonical text writes x before a unit: an option's
  // two-word value «(a+b) GHz» must read back as «a+b», or every re-format
  // would add a pair of parentheses. Without a unit the text stays as typed.
  units_ = units;
  if (units.is_valid() && detail::is_parenthesised(value)) {
    value_.assign(detail::inside_parentheses(value));
    parenthesised_ = detail::keeps_parentheses(value_);
  } else {
    value_.assign(value);
    parenthesised_ = detail::needs_parentheses(value_);
  }
}

bool ParserValue::set_unit_string(std::string unit, const units::UnitType* type, bool allow_percent) {
  UnitAndMultiplier found;
  if (!find_unit_word(&found, unit, type, allow_percent)) return false;
  set_unit_multiplier(found);
  return true;
}

void ParserValue::set_numeric_value_and_unit_multiplier(std::string value, UnitAndMultiplier units) {
  assign_value_and_units(detail::trim_blanks(value), units);
  update_combined_value();
}

bool ParserValue::set_numeric_value_and_unit_string(std::string value, std::string unit,
                                                    const units::UnitType* type, bool allow_percent) {
  return set_numeric_value_and_unit_words(value, unit, type, allow_percent);
}

bool ParserValue::set_numeric_value_and_unit_words(std::string_view value, std::string_view unit,
                                                   const units::UnitType* type, bool allow_percent) {
  UnitAndMultiplier found;
  if (!find_unit_word(&found, unit, type, allow_percent)) return false;
  const std::string_view text = detail::trim_blanks(value);
  // Parentheses are how a value is written before its unit; one whose own
  // do not pair up («a)») could not be read back.
  if (found.is_valid() && !detail::is_plain_value(text) && !detail::is_balanced(text)) return false;
  assign_value_and_units(text, found);
  update_combined_value();
  return true;
}

void ParserValue::set_value_and_unit_multiplier(std::string value, UnitAndMultiplier units) {
  const std::string_view text = detail::trim_blanks(value);
  ParserValue own;
  // An empty split means the whole text was a unit word ("m"): more likely a
  // variable than a unit when the caller names the unit.
  if (units.type() != nullptr && own.set_value_with_unit_impl(text, units.type()) &&
      !own.value_.empty()) {
    value_ = std::move(own.value_);
    units_ = own.units_;
    parenthesised_ = own.parenthesised_;
  } else {
    assign_value_and_units(text, units);
  }
  update_combined_value();
}

bool ParserValue::set_value_and_unit_string(std::string value, std::string unit,
                                            const units::UnitType* type, bool allow_percent) {
  UnitAndMultiplier found;
  if (!find_unit_word(&found, unit, type, allow_percent)) return false;
  set_value_and_unit_multiplier(std::move(value), found);
  return true;
}

bool ParserValue::scale_value_to_new_unit(UnitAndMultiplier new_unit) {
  bool ok = false;
  const double x = toDouble_nothrow(value_, &ok);
  if (!ok) return false;
  double y = x;
  // An incomplete new unit reaches the conversions, which refuse it.
  if (!units_.is_valid()) {
    if (!units::convert_parm_value_from_mks_units(x, new_unit, &y)) return false;
  } else if (new_unit.type() != nullptr && new_unit.type() != units_.type()) {
    throw std::runtime_error("Cannot scale from \"" + units_.unit_name() + "\" to \"" +
                             new_unit.unit_name() + "\".");
  } else if (new_unit.multiplier() == units_.multiplier()) {
    return true;
  } else if (!units::convert_parm_value_units(x, units_, &y, new_unit)) {
    return false;
  }
  // Six digits: the rescaled text goes back into the user's design.
  if (y != x) value_ = std::fabs(y) > 1e-21 ? fromDouble(y, general, 6, 0) : "0";
  units_ = new_unit;
  update_combined_value();
  return true;
}

bool ParserValue::scale_if_unitless(UnitAndMultiplier new_unit) {
  if (units_.is_valid()) return true;
  return scale_value_to_new_unit(new_unit);
}

void ParserValue::update_combined_value() {
  // A type that hides its unit writes the value alone, unless the value alone
  // would read differently: one that splits off a unit of its own (the
  // variable «deg», «0deg», «5%»), or one ending in '}', whose tail would be
  // taken for an option («file{a} tune{ b } deg»). A unit word alone («deg»)
  // keeps the word: no value stands for it.
  const bool hides_unit = units_.is_valid() && !units_.type()->uses_scale_factors();
  const auto reads_differently_alone = [this] {
    ParserValue split;
    return value_.back() == '}' || split.set_value_with_unit_impl(value_, units_.type()) ||
           split.set_value_with_unit_impl(value_, units::detail::percent_unit().type());
  };
  if (!units_.is_valid() || (hides_unit && !value_.empty() && !reads_differently_alone())) {
    combined_value_ = value_;
    return;
  }
  const std::string& unit = units_.multiplier()->unit_name();
  const bool dbm = unit == std::string_view("dBm");
  // An unbalanced value («"») would not be found inside the function again.
  if (use_dbmtow_functions_ && (dbm || unit == std::string_view("dBW")) && detail::is_balanced(value_)) {
    combined_value_.assign(dbm ? "dbmtow(" : "dbwtow(").append(value_).append(")");
  } else if (parenthesised_) {
    combined_value_.assign("(").append(value_).append(") ").append(unit);
  } else {
    // A hidden unit kept after its value stands as a second word.
    combined_value_.assign(value_).append(hides_unit && !value_.empty() ? " " : "").append(unit);
  }
}

}  // namespace qorin::parser
