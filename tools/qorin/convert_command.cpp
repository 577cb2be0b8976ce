// qorin convert VALUE FROM_UNIT TO_UNIT: one value between two units of the
// same type, through MKS.
#include "command.h"

#include <qorin/text.h>
#include <qorin/units.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

struct ConvertArgs {
  std::string value;
  std::string from;
  std::string to;
  std::string type;
};

std::string type_names(const std::vector<const units::UnitType*>& types) {
  std::string names;
  for (const units::UnitType* type : types) names += (names.empty() ? "" : ", ") + type->unit_type_name();
  return names;
}

int convert(const ConvertArgs& args) {
  const auto from_types = units::find_unit_types_with(args.from);
  if (from_types.empty()) return usage_error("unknown unit \"" + args.from + "\"");
  const auto to_types = units::find_unit_types_with(args.to);
  if (to_types.empty()) return usage_error("unknown unit \"" + args.to + "\"");
  // A unit name may stand in several types («ft» in lng and dist): the
  // conversion uses a type that has both, the first one unless --type names
  // another. The library converts across types on request; from a shell that
  // is always a mistake.
  std::vector<const units::UnitType*> shared;
  for (const units::UnitType* type : from_types) {
    if (std::find(to_types.begin(), to_types.end(), type) != to_types.end()) shared.push_back(type);
  }
  if (shared.empty()) {
    return usage_error("cannot convert " + args.from + " to " + args.to + ": no unit type has both (" + args.from +
                       " is " + type_names(from_types) + ", " + args.to + " is " + type_names(to_types) + ")");
  }
  const units::UnitType* type = shared.front();
  if (!args.type.empty()) {
    auto chosen = std::find_if(shared.begin(), shared.end(),
                               [&](const units::UnitType* t) { return t->unit_type_name() == args.type; });
    if (chosen == shared.end()) {
      return usage_error("unit type \"" + args.type + "\" does not have both " + args.from + " and " + args.to +
                         "; types that do: " + type_names(shared));
    }
    type = *chosen;
  }
  const units::UnitAndMultiplier from = units::find_unit_of_type(type, args.from.c_str());
  const units::UnitAndMultiplier to = units::find_unit_of_type(type, args.to.c_str());
  bool ok = false;
  const double value = toDouble_nothrow(args.value, &ok);
  if (!ok) return invalid_input("not a number: \"" + args.value + "\"");
  if (!std::isfinite(value)) return invalid_input(args.value + " is out of range");
  double result = 0.0;
  if (!units::convert_parm_value_units(value, from, &result, to) || !std::isfinite(result)) {
    return invalid_input(args.value + " " + args.from + " cannot be represented in " + args.to);
  }
  // Fifteen digits: exact enough, and free of the last-bit noise of the
  // logarithmic units (10 dBm is 10 mW, not 9.999999999999998).
  std::cout << fromDouble(result, general, 15, 0) << "\n";
  return kExitOk;
}

CommandRegistration convert_command{
    "convert", "Convert a value between two units of one type", [](CLI::App& app) -> CommandRun {
      auto args = std::make_shared<ConvertArgs>();
      app.add_option("VALUE", args->value, "A number such as 10, -2.5 or 1e-3")->required();
      app.add_option("FROM_UNIT", args->from, "The value's unit, exact spelling (dBm, kHz, mOhm)")
          ->required();
      app.add_option("TO_UNIT", args->to, "The unit to convert to, of the same type")->required();
      app.add_option("--type", args->type, "The unit type, where both units exist in several (lng, dist)")
          ->type_name("TYPE");
      app.footer(
          "Example: qorin convert 10 dBm mW  prints 10\n"
          "Exit status:\n"
          "  0  converted; the result is printed with 15 significant digits\n"
          "  1  VALUE is not a number or out of range, or it cannot be represented in TO_UNIT\n"
          "     (a power of zero or less in any power unit, or too large)\n"
          "  2  unknown unit name, no unit type with both units, bad arguments, or\n"
          "     output that could not be written");
      return [args] { return convert(*args); };
    }};

}  // namespace

}  // namespace qorin::tool
