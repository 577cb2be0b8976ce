// Reading a typed value: splitting off its unit suffix and looking up unit words.
#include "parser/value_forms.h"
#include "units/percent_unit.h"

#include <qorin/parser.h>

namespace qorin::parser {

using units::UnitAndMultiplier;
using units::UnitMultiplier;
using units::UnitType;
using units::detail::percent_unit;

namespace {

bool is_power(const UnitType* type) {
  return type != nullptr && type->get_legacy_type() == DM_UNIT_POWER;
}

// Users type "dbm" for dBm often enough that it is accepted, for that one unit.
constexpr std::string_view kLowerDbm = "dbm";
constexpr std::string_view kDbm = "dBm";

// How many trailing bytes of `text` stand for `multiplier`, or 0. The last
// byte is compared first: most multipliers fail there, without a memcmp.
std::size_t matched_tail(std::string_view text, const UnitMultiplier& multiplier, bool power) {
  if (text.empty()) return 0;
  const std::string& name = multiplier.unit_name();
  if (text.back() == name.back() && detail::ends_with(text, name)) return name.size();
  if (power && text.back() == 'm' && detail::ends_with(text, kLowerDbm) && name == kDbm) {
    return kLowerDbm.size();
  }
  return multiplier.suffix() != 0 && text.back() == multiplier.suffix() ? 1 : 0;
}

struct PowerCall {
  std::string_view argument;  // within the text read
  UnitAndMultiplier unit;
};

// "dbmtow(v)" / "dbwtow(v)" as update_combined_value writes them, with blanks
// allowed around and inside the parentheses.
bool read_power_call(std::string_view text, PowerCall* call) {
  constexpr std::string_view kDbmCall = "dbmtow";
  constexpr std::string_view kDbwCall = "dbwtow";
  static_assert(kDbmCall.size() == kDbwCall.size());
  static const UnitAndMultiplier dbm = units::find_unit("dBm");
  static const UnitAndMultiplier dbw = units::find_unit("dBW");
  const UnitAndMultiplier* unit = detail::begins_with(text, kDbmCall)   ? &dbm
                                  : detail::begins_with(text, kDbwCall) ? &dbw
                                                                        : nullptr;
  if (unit == nullptr) return false;
  const std::string_view argument = detail::trim_blanks(text.substr(kDbmCall.size()));
  if (!detail::is_parenthesised(argument)) return false;
  call->argument = detail::inside_parentheses(argument);
  call->unit = *unit;
  return true;
}

const UnitMultiplier* find_scaled_unit(const UnitType& type, std::string_view text) {
  const bool power = is_power(&type);
  for (const UnitMultiplier& m : type.multipliers()) {
    const bool letter = text.size() == 1 && m.suffix() != 0 && text[0] == m.suffix();
    if (letter || m.unit_name() == text || (power && m.unit_name() == kDbm && text == kLowerDbm)) {
      return &m;
    }
  }
  return nullptr;
}

// Unscaled types have one meaningful unit; an empty word selects it too.
const UnitMultiplier* find_plain_unit(const UnitType& type, std::string_view text) {
  if (type.multipliers().empty()) return nullptr;
  const UnitMultiplier& first = type.multipliers().front();
  const bool letter = text.size() == 1 && first.suffix() != 0 && text[0] == first.suffix();
  return text.empty() || text == first.unit_name() || letter ? &first : nullptr;
}

}  // namespace

bool ParserValue::set_value_with_unit_impl(std::string_view text, const UnitType* type) {
  parenthesised_ = false;
  value_.clear();
  if (type == nullptr) return false;
  const bool power = is_power(type);
  for (const UnitMultiplier& multiplier : type->multipliers()) {
    const std::size_t tail = matched_tail(text, multiplier, power);
    if (tail == 0) continue;
    const std::string_view rest = text.substr(0, text.size() - tail);
    const bool blank_before_unit = !rest.empty() && rest.back() == ' ';
    const std::string_view candidate = detail::trim_blanks(rest);
    const bool accepted = candidate.empty() || detail::is_number(candidate);
    // "1kHz": the "Hz" match leaves "1k", which must not pass as a variable
    // name, so the walk goes on to "kHz".
    if (!accepted && !blank_before_unit && detail::is_name_byte(candidate.back())) continue;
    if (accepted || detail::is_word_value(candidate)) {
      value_.assign(candidate);
      parenthesised_ = detail::needs_parentheses(value_);
    } else if (detail::is_parenthesised(candidate)) {
      value_.assign(detail::inside_parentheses(candidate));
      parenthesised_ = detail::keeps_parentheses(value_);
    } else {
      continue;
    }
    units_ = UnitAndMultiplier(type, &multiplier);
    return true;
  }
  return false;
}

void ParserValue::set_value_with_optional_unit_suffix(std::string text, const UnitType* type,
                                                      bool allow_percent, bool allow_any_unit) {
  parse_value(text, type, allow_percent, allow_any_unit);
}

void ParserValue::parse_value(std::string_view text, const UnitType* type, bool allow_percent,
                              bool allow_any_unit) {
  parenthesised_ = false;
  const std::string_view working = detail::trim_blanks(text);
  bool found = allow_percent && set_value_with_unit_impl(working, percent_unit().type());
  if (!found && allow_any_unit) {
    for (const UnitType& any : units::get_all_units()) {
      if ((found = set_value_with_unit_impl(working, &any))) break;
    }
  }
  if (!found && type != nullptr) found = set_value_with_unit_impl(working, type);
  PowerCall call;
  // With any unit allowed the call names its own type, as a unit suffix would.
  if (!found && (is_power(type) || allow_any_unit) && read_power_call(working, &call)) {
    // The call's own parentheses are gone; the argument is the value as
    // written, so «dbmtow((a))» keeps «(a)».
    units_ = call.unit;
    value_.assign(call.argument);
    parenthesised_ = detail::needs_parentheses(value_);
    found = true;
  }
  if (!found) assign_value_and_units(working, UnitAndMultiplier(type, nullptr));
  update_combined_value();
}

bool ParserValue::find_unit(UnitAndMultiplier* out, std::string text, const UnitType* type,
                            bool allow_percent) {
  return find_unit_word(out, text, type, allow_percent);
}

bool ParserValue::find_unit_word(UnitAndMultiplier* out, std::string_view text, const UnitType* type,
                                 bool allow_percent) {
  if (allow_percent && text == "%") {
    *out = percent_unit();
    return true;
  }
  if (text == "None") {
    *out = UnitAndMultiplier(type, nullptr);
    return true;
  }
  if (type == nullptr) {
    const UnitAndMultiplier found = units::find_unit(std::string(text).c_str());
    // The name comparison refuses texts with an embedded NUL.
    if (!found.is_valid() || found.unit_name() != text) return false;
    *out = found;
    return true;
  }
  const UnitMultiplier* multiplier =
      type->uses_scale_factors() ? find_scaled_unit(*type, text) : find_plain_unit(*type, text);
  if (multiplier == nullptr) return false;
  *out = UnitAndMultiplier(type, multiplier);
  return true;
}

}  // namespace qorin::parser
