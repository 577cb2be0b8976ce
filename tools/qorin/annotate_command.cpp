// qorin annotate: parses annotations and shows what the library makes of
// them, or (--canonical) rewrites a whole file of them in canonical form.
#include "annotation_examples.h"
#include "annotation_report.h"
#include "command.h"

#include <qorin/parser.h>

#include <cstdio>
#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

struct AnnotateOptions {
  std::string type;
  int legacy = 0;
  bool any_unit = false;
  bool no_dbmtow = false;
  bool json = false;
  bool canonical = false;
  std::vector<std::string> texts;
  CLI::Option* type_option = nullptr;
  CLI::Option* legacy_option = nullptr;
};

std::string valid_type_names() {
  std::string names;
  for (const units::UnitType& type : units::get_all_units()) {
    names += (names.empty() ? "" : ", ") + type.unit_type_name();
  }
  return names;
}

// Feeds each input to `handle`: the TEXT arguments, else the lines of
// standard input (a carriage return before the line feed is dropped).
template <class Handle>
void for_each_input(const std::vector<std::string>& texts, Handle handle) {
  if (!texts.empty()) {
    for (const std::string& text : texts) handle(text);
    return;
  }
  std::ios::sync_with_stdio(false);
  std::string line;
  while (std::getline(std::cin, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    handle(line);
  }
}

int run_annotate(const AnnotateOptions& options) {
  const units::UnitType* unit_type = nullptr;
  if (*options.type_option) {
    unit_type = units::find_unit_type(options.type);
    if (unit_type == nullptr) {
      return usage_error("unknown unit type \"" + options.type + "\"; valid types: " + valid_type_names());
    }
  } else if (*options.legacy_option) {
    unit_type = units::get_legacy_unit(static_cast<DMUnitE>(options.legacy));
    if (unit_type == nullptr) {
      return usage_error("legacy unit code " + std::to_string(options.legacy) + " is outside -2..15");
    }
  }

  bool all_valid = true;
  bool first = true;
  std::string out;  // written in large blocks: --canonical streams whole files
  for_each_input(options.texts, [&](const std::string& text) {
    parser::ParamItemParser parser;
    read_annotation(parser, text, unit_type, options.any_unit, !options.no_dbmtow);
    all_valid = parser.is_valid() && all_valid;
    if (options.canonical) {
      out += parser.get_combined_string();
      out += '\n';
    } else if (options.json) {
      out += annotation_json(parser, text).dump();
      out += '\n';
    } else {
      if (!first) out += '\n';
      out += describe_annotation(parser, text);
    }
    first = false;
    if (out.size() >= (1u << 16)) {
      std::fwrite(out.data(), 1, out.size(), stdout);
      out.clear();
    }
  });
  std::fwrite(out.data(), 1, out.size(), stdout);
  std::fflush(stdout);
  return all_valid ? kExitOk : kExitInvalidInput;
}

CommandRegistration annotate_registration{
    "annotate", "Parse parameter annotations and write them back in canonical form",
    [](CLI::App& app) -> CommandRun {
      auto options = std::make_shared<AnnotateOptions>();
      app.description(
          "Parses each TEXT, or each line of standard input when none is given, and shows the\n"
          "canonical text, whether it is valid, the nominal and every option.\n"
          "Exit status: 0 all valid; 1 any invalid; 2 usage error.");
      options->type_option =
          app.add_option("--type", options->type, "Unit type of the values: " + valid_type_names());
      options->legacy_option =
          app.add_option("--legacy", options->legacy, "Unit type by its legacy code, -2 (string) to 15 (pct)");
      CLI::Option* any_unit =
          app.add_flag("--any-unit", options->any_unit, "The nominal may carry any unit; it sets the type");
      options->type_option->excludes(options->legacy_option)->excludes(any_unit);
      options->legacy_option->excludes(any_unit);
      app.add_flag("--no-dbmtow", options->no_dbmtow, "Write power in dBm/dBW with its unit, not as dbmtow(...)");
      CLI::Option* json = app.add_flag("--json", options->json, "One JSON object per input");
      app.add_flag("--canonical", options->canonical,
                   "Only the canonical text, one line per input (invalid options as typed)")
          ->excludes(json);
      app.add_option("TEXT", options->texts, "Annotations to parse");
      return [options] { return run_annotate(*options); };
    }};

}  // namespace

}  // namespace qorin::tool
