// Parameter values and annotations.
//
// A ParserValue is one value as a user types it: a number, a variable name, a
// quoted string or a file{...} reference, optionally followed by a unit from
// the catalogue (<qorin/units.h>). It keeps value and unit apart and re-forms
// the canonical text (its combined value). Parsing never throws. A blank is
// the character ' ' only; tabs are not trimmed.
//
// Example (frequency type):
//   "1kHz"     => value "1",    unit kHz, combined "1kHz"
//   "1 k"      => value "1",    unit kHz, combined "1kHz"
//   "x_1 GHz"  => value "x_1",  unit GHz, combined "x_1GHz"
//   "10 dbm" (power type) => value "10", unit dBm, combined "dbmtow(10)"
#pragma once

#include <qorin/export.h>
#include <qorin/units.h>

#include <string>

namespace qorin::parser {

// One value and its unit.
//
// The value is "unitless" when either unit pointer is null. A value without a
// recognised unit keeps the type it was parsed with and no multiplier, so
// unit_type() still names the expected quantity; the combined text is then
// the value alone. Types without scale factors (ang, temp, num, string) never
// show their unit in the combined text.
//
// The parenthesised form "(" value ") " unit is written for a value that would
// not read back if glued to its unit: one the user wrote in parentheses
// («(a+b) pF» => value «a+b»), and one set through set_value_and_unit_* or
// read from dbmtow(...) that is not empty, a number, a quoted string, a
// variable name or a file reference. Note: a variable name glued to its unit
// («x_1GHz») does not read back as value and unit; the rules that keep «1kHz»
// apart from «1k» + «Hz» refuse it.
//
// Not thread-safe for writes; distinct values may be used on distinct threads.
class QORIN_EXPORT ParserValue {
 public:
  ParserValue() = default;

  std::string combined_value() const { return combined_value_; }
  std::string value() const { return value_; }
  const units::UnitAndMultiplier& units() const { return units_; }
  const units::UnitType* unit_type() const { return units_.type(); }

  // Replaces the units and re-forms the combined text.
  void set_unit_multiplier(units::UnitAndMultiplier units);
  // Power values in dBm/dBW re-form as "dbmtow(v)"/"dbwtow(v)" while set
  // (the default), as "vdBm"/"vdBW" otherwise.
  void set_use_dbmtow_functions(bool use);
  bool uses_dbmtow_functions() const { return use_dbmtow_functions_; }
  void reformat();
  // Whether the value part is a number (isValidNumber).
  bool is_number() const;

  // The main parse of `text` (blanks around it ignored). Tried in this order,
  // the first success wins: the percent unit (when allowed); every type of the
  // catalogue in order (when allow_any_unit); `type`; for the power type, a
  // "dbmtow(v)"/"dbwtow(v)" call; else the whole text is a value without unit.
  // A unit is found by walking the type's units in catalogue order and
  // matching the full name, a bare scale letter, or "dbm" for dBm; a value
  // glued to the unit that ends in a letter, digit or '_' and is not a number
  // sends the walk on.
  // The power call tolerates blanks around and inside its parentheses; its
  // argument is everything between the first "(" and the final ")", taken as
  // written (so every text re-formed by this class reads back). Without both
  // parentheses ("dbmtow_gain") the text is a plain value.
  //
  // Example:
  //   "1kHz"  (freq)           => "1" kHz       "1 k" (freq)       => "1" kHz
  //   "1 m"   (res)            => "1" mOhm      "1 M" (res)        => "1" MOhm
  //   "\"abc\" pF" (cap)       => "\"abc\"" pF  "file{a.txt} Hz"   => "file{a.txt}" Hz
  //   "(a+b) pF" (cap)         => "a+b" pF, combined "(a+b) pF"
  //   "dbmtow ( 10 )" (power)  => "10" dBm, combined "dbmtow(10)"
  //   "5 %" (cap, percent)     => "5" %         "2.5" (freq)       => "2.5" (freq, no unit)
  void set_value_with_optional_unit_suffix(std::string text, const units::UnitType* type,
                                           bool allow_percent, bool allow_any_unit);
  // Looks `unit` up with find_unit below and, when found, sets it and
  // re-forms. False (and no change) when not found.
  bool set_unit_string(std::string unit, const units::UnitType* type, bool allow_percent);
  // Sets the value text (blanks trimmed) and the units as given.
  void set_numeric_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  // The two-word form ("1" "pF"): false and no change when `unit` is not found.
  bool set_numeric_value_and_unit_string(std::string value, std::string unit,
                                         const units::UnitType* type, bool allow_percent);
  // As the numeric forms, but when the value text carries its own non-empty
  // value and a unit of the given unit's type, that unit wins: the text is
  // explicit, the given unit only a default.
  //
  // Example:
  //   ("5 GHz", MHz) => "5" GHz        ("x", MHz) => "x" MHz
  //   ("a+b", pF)    => "a+b" pF, combined "(a+b) pF"
  void set_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  bool set_value_and_unit_string(std::string value, std::string unit, const units::UnitType* type,
                                 bool allow_percent);

  // Rescales a numeric value into `new_unit`; a unitless value is taken as
  // MKS. The new value text is fromDouble(y, 'g', 6, 0), or "0" when
  // |y| <= 1e-21. False when the value is not a number or the conversion
  // fails (non-positive power, float overflow guard). Throws
  // std::runtime_error for units of another type:
  //   "Cannot scale from \"pF\" to \"Hz\"."
  // and, from the conversion, for a new unit that is not complete.
  //
  // Example:
  //   "1" (no unit) to kHz => "0.001", combined "0.001kHz"
  //   "1500" MHz to GHz    => "1.5"
  bool scale_value_to_new_unit(units::UnitAndMultiplier new_unit);
  // True and no change when the value has both unit pointers.
  bool scale_if_unitless(units::UnitAndMultiplier new_unit);

  // A unit word: "%" (when allowed) is the percent unit; "None" is success
  // with `type` and no multiplier. With a scaled type: a scale letter, an
  // exact name, or "dbm" for dBm; with an unscaled type: "", the first unit's
  // name or letter; with no type, an exact name anywhere in the catalogue
  // (first match). *out is untouched on failure.
  //
  // Example:
  //   ("k", freq) => kHz    ("kHz", res) => false    ("ft", null) => lng ft
  static bool find_unit(units::UnitAndMultiplier* out, std::string text, const units::UnitType* type,
                        bool allow_percent);
  // Blanks around ignored. '...' with every inner ' escaped by a backslash,
  // or "..." whose inner " are escaped by a backslash or doubled.
  //
  // Example:
  //   'it\'s' => true    'it's' => false    "a""b" => true    "a"b" => false    ' => true
  static bool is_quoted_string(std::string text);
  // [A-Za-z_][A-Za-z0-9_]*, ASCII only.
  static bool is_valid_variable_name(const std::string& text);

 private:
  // The annotation classes re-form their values' texts directly.
  friend class ParamOptionData;
  friend class ParamItemParser;

  // Re-forms the combined value from value, unit and flags.
  void update_combined_value();
  bool set_value_with_unit_impl(std::string text, const units::UnitType* type);
  // Sets value and units without re-forming; parenthesises values that would
  // not read back glued to the unit.
  void assign_value_and_units(std::string value, units::UnitAndMultiplier units);

  std::string combined_value_;
  std::string value_;
  units::UnitAndMultiplier units_;
  bool parenthesised_ = false;
  bool use_dbmtow_functions_ = true;  // deliberately on by default
};

}  // namespace qorin::parser
