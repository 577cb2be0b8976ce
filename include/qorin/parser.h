// Parameter values and annotations.
//
// A ParserValue is one value as a user types it: a number, a variable name, a
// quoted string or a file{...} reference, optionally followed by a unit from
// the catalogue (<qorin/units.h>). It keeps value and unit apart and re-forms
// the canonical text (its combined value). Parsing never throws.
//
// Example (frequency type):
//   "1kHz"     => value "1",    unit kHz, combined "1kHz"
//   "1 k"      => value "1",    unit kHz, combined "1kHz"
//   "x_1 GHz"  => value "x_1",  unit GHz
//   "10 dbm" (power type) => value "10", unit dBm, combined "dbmtow(10)"
#pragma once

#include <qorin/export.h>
#include <qorin/units.h>

#include <string>

namespace qorin::parser {

class QORIN_EXPORT ParserValue {
 public:
  ParserValue() = default;

  std::string combined_value() const { return combined_value_; }
  std::string value() const { return value_; }
  const units::UnitAndMultiplier& units() const { return units_; }
  const units::UnitType* unit_type() const { return units_.type(); }

  void set_unit_multiplier(units::UnitAndMultiplier units);
  void set_use_dbmtow_functions(bool use);
  bool uses_dbmtow_functions() const { return use_dbmtow_functions_; }
  void reformat();
  bool is_number() const;

  void set_value_with_optional_unit_suffix(std::string text, const units::UnitType* type,
                                           bool allow_percent, bool allow_any_unit);
  bool set_unit_string(std::string unit, const units::UnitType* type, bool allow_percent);
  void set_numeric_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  bool set_numeric_value_and_unit_string(std::string value, std::string unit,
                                         const units::UnitType* type, bool allow_percent);
  void set_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  bool set_value_and_unit_string(std::string value, std::string unit, const units::UnitType* type,
                                 bool allow_percent);

  bool scale_value_to_new_unit(units::UnitAndMultiplier new_unit);
  bool scale_if_unitless(units::UnitAndMultiplier new_unit);

  static bool find_unit(units::UnitAndMultiplier* out, std::string text, const units::UnitType* type,
                        bool allow_percent);
  static bool is_quoted_string(std::string text);
  static bool is_valid_variable_name(const std::string& text);

 private:
  // The annotation classes re-form their values' texts directly.
  friend class ParamOptionData;
  friend class ParamItemParser;

  // Re-forms the combined value from value, unit and flags.
  void update_combined_value();
  bool set_value_with_unit_impl(std::string text, const units::UnitType* type);

  std::string combined_value_;
  std::string value_;
  units::UnitAndMultiplier units_;
  bool parenthesised_ = false;
  bool use_dbmtow_functions_ = true;  // deliberately on by default
};

}  // namespace qorin::parser
