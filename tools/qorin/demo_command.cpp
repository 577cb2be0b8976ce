// qorin demo: the library's main job on built-in annotations.
#include "annotation_examples.h"
#include "annotation_report.h"
#include "command.h"

#include <iostream>

namespace qorin::tool {

namespace {

std::string settings_text(const AnnotationExample& example) {
  std::string text = example.any_unit ? "any unit" : std::string("type ") + example.unit_type;
  if (!example.use_dbmtow) text += ", power written with its unit";
  if (example.scale_to) text += std::string(", unitless values rescaled to ") + example.scale_to;
  return text;
}

int run_demo() {
  bool first = true;
  for (const AnnotationExample& example : kAnnotationExamples) {
    parser::ParamItemParser parser;
    const parser::AnnotationCheck check = read_example(parser, example);
    std::cout << (first ? "" : "\n") << "== " << example.shows << " (" << settings_text(example) << ")\n"
              << describe_annotation(parser, check, example.text);
    first = false;
  }
  return kExitOk;
}

CommandRegistration demo_registration{
    "demo", "Show what the library makes of a set of typical annotations",
    [](CLI::App&) -> CommandRun { return run_demo; }};

}  // namespace

}  // namespace qorin::tool
