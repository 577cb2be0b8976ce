// qorin units [TYPE]: the unit catalogue, whole or one type.
#include "command.h"

#include <qorin/text.h>
#include <qorin/units.h>

#include <fmt/format.h>

#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

void print_type(const units::UnitType& type) {
  const std::string mks = type.get_mks_unit().empty() ? "none" : type.get_mks_unit();
  std::cout << fmt::format("{} ({}), MKS unit: {}, scale letters: {}\n", type.unit_type_name(),
                           type.description(), mks, type.uses_scale_factors() ? "yes" : "no");
  if (type.multipliers().empty()) {
    std::cout << "  (no units)\n";
    return;
  }
  std::cout << fmt::format("  {:<10} {:<15} {}\n", "unit", "factor", "letter");
  for (const units::UnitMultiplier& m : type.multipliers()) {
    // Fifteen digits show each factor's decimal literal without binary noise.
    std::cout << fmt::format("  {:<10} {:<15} {}\n", m.unit_name(), fromDouble(m.multipler(), general, 15, 0),
                             m.suffix() != 0 ? std::string(1, m.suffix()) : "-");
  }
}

std::string type_names() {
  std::string names;
  for (const units::UnitType& type : units::get_all_units()) {
    names += (names.empty() ? "" : ", ") + type.unit_type_name();
  }
  return names;
}

CommandRegistration units_command{
    "units", "List the unit catalogue, or the units of one type", [](CLI::App& app) -> CommandRun {
      auto type_name = std::make_shared<std::string>();
      app.add_option("TYPE", *type_name, "A unit type name such as freq or power (default: all)");
      return [type_name]() -> int {
        if (type_name->empty()) {
          const char* separator = "";
          for (const units::UnitType& type : units::get_all_units()) {
            std::cout << separator;
            print_type(type);
            separator = "\n";
          }
          return kExitOk;
        }
        const units::UnitType* type = units::find_unit_type(*type_name);
        if (type == nullptr) {
          return usage_error("unknown unit type \"" + *type_name + "\"; valid types: " + type_names());
        }
        print_type(*type);
        return kExitOk;
      };
    }};

}  // namespace

}  // namespace qorin::tool
