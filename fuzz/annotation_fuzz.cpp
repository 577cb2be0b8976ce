// ParamItemParser on arbitrary text. The first byte picks the settings (unit
// type, none or any unit; dbmtow; rescaling of unitless values), the rest is
// the annotation. Parsing must not crash, leak or throw, and the canonical
// text must read back as itself.
#include <qorin/parser.h>

#include "fuzz/annotation_corpus.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using qorin::parser::ParamItemParser;

struct Settings {
  const qorin::units::UnitType* type = nullptr;
  bool any_unit = false;
  bool use_dbmtow = true;
  qorin::units::UnitAndMultiplier scale_to;
};

constexpr std::uint8_t kNoType = 18, kAnyUnit = 19, kTypeCount = 20;
constexpr std::uint8_t kNoDbmtow = 0x20, kRescale = 0x40;

Settings decode(std::uint8_t selector) {
  const auto& all = qorin::units::get_all_units();
  Settings settings;
  std::uint8_t type = (selector & 0x1f) % kTypeCount;
  if (type < all.size()) settings.type = &all[type];
  settings.any_unit = type == kAnyUnit;
  settings.use_dbmtow = (selector & kNoDbmtow) == 0;
  if ((selector & kRescale) && settings.type && !settings.type->multipliers().empty()) {
    settings.scale_to = {settings.type, &settings.type->multipliers().back()};
  }
  return settings;
}

// Whether `value`'s text, read again on its own as the parser would read it,
// gives the same text (and, for a nominal that sets the type, the same type).
// Two single-value quirks fail this and are not the annotation's doing: a
// value spelt as the unit of a type that hides its unit («Celsius Celsius»
// => "Celsius" => ""), and a variable name glued to its unit («x pF» =>
// "xpF", which reads back without a unit).
bool reads_back(const qorin::parser::ParserValue& value, const qorin::units::UnitType* type, bool allow_percent,
                bool any_unit) {
  qorin::parser::ParserValue again;
  again.set_use_dbmtow_functions(value.uses_dbmtow_functions());
  again.set_value_with_optional_unit_suffix(value.combined_value(), type, allow_percent, any_unit);
  return again.combined_value() == value.combined_value() && (!any_unit || again.unit_type() == value.unit_type());
}

bool values_read_back(const ParamItemParser& parser, const Settings& settings) {
  if (!reads_back(parser.get_nominal(), settings.type, false, settings.any_unit)) return false;
  for (const auto& option : parser.options()) {
    using namespace qorin::parser;
    ParamOptionSweepType sweep = option->sweep_type();
    bool delta = sweep == sweep_delta || sweep == sweep_percent_delta;
    bool range = sweep == sweep_range || sweep == sweep_stepped_range;
    if ((delta || range) && !reads_back(option->start(), parser.unit_type(), delta, false)) return false;
    if (range && !reads_back(option->stop(), parser.unit_type(), false, false)) return false;
    if (sweep == sweep_stepped_range && !reads_back(option->step(), parser.unit_type(), false, false)) return false;
  }
  return true;
}

// The canonical text; `stable_values` tells whether every value reads back.
std::string canonical(const Settings& settings, const std::string& text, bool* stable_values) {
  ParamItemParser parser;
  parser.set_unit_type(settings.type);
  parser.allow_any_unit(settings.any_unit);
  parser.set_use_dbmtow_functions(settings.use_dbmtow);
  parser.parse(text, true);
  if (settings.scale_to.is_valid()) parser.scale_all_unitless_values(settings.scale_to);
  parser.reformat();
  parser.is_valid();
  *stable_values = values_read_back(parser, settings);
  return parser.get_combined_string();
}

}  // namespace

// Seeds the first corpus folder on the command line with generated
// annotations, so every run starts from realistic text.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  qorin::testing::seed_corpus_folder(*argc, *argv, 3, 200, 256);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Settings settings = decode(data[0]);
  std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  bool stable_values = false;
  std::string first = canonical(settings, text, &stable_values);
  if (!stable_values) return 0;
  std::string second = canonical(settings, first, &stable_values);
  if (second != first) {
    std::fprintf(stderr, "canonical text not stable:\n  input  [%s]\n  first  [%s]\n  second [%s]\n", text.c_str(),
                 first.c_str(), second.c_str());
    std::abort();
  }
  return 0;
}
