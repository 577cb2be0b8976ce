// qorin convert VALUE FROM_UNIT TO_UNIT: one value between two units of the
// same type, through MKS.
#include "command.h"

#include <qorin/text.h>
#include <qorin/units.h>

#include <cmath>
#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

struct ConvertArgs {
  std::string value;
  std::string from;
  std::string to;
};

int convert(const ConvertArgs& args) {
  const units::UnitAndMultiplier from = units::find_unit(args.from.c_str());
  if (!from.is_valid()) return usage_error("unknown unit \"" + args.from + "\"");
  const units::UnitAndMultiplier to = units::find_unit(args.to.c_str());
  if (!to.is_valid()) return usage_error("unknown unit \"" + args.to + "\"");
  // The library converts across types on request; from a shell that is
  // always a mistake.
  if (from.type() != to.type()) {
    return usage_error("cannot convert " + from.type()->description() + " (" + args.from + ") to " +
                       to.type()->description() + " (" + args.to + ")");
  }
  bool ok = false;
  const double value = toDouble_nothrow(args.value, &ok);
  if (!ok) return invalid_input("not a number: \"" + args.value + "\"");
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
      app.footer(
          "Example: qorin convert 10 dBm mW  prints 10\n"
          "Exit status:\n"
          "  0  converted; the result is printed with 15 significant digits\n"
          "  1  VALUE is not a number, or it cannot be represented in TO_UNIT\n"
          "     (a power of zero or less in any power unit, or too large)\n"
          "  2  unknown unit name, units of different types, or bad arguments");
      return [args] { return convert(*args); };
    }};

}  // namespace

}  // namespace qorin::tool
