// The report is built once, as JSON; the reader's lines are rendered from it,
// so both forms always say the same.
#include "annotation_report.h"

#include <qorin/text.h>

#include <fmt/format.h>
#include <utf8.h>

#include <iterator>

namespace qorin::tool {

namespace {

using nlohmann::ordered_json;
using parser::ParamOptionData;

ordered_json value_json(const parser::ParserValue& value) {
  ordered_json out;
  out["text"] = value.combined_value();
  out["value"] = value.value();
  const units::UnitAndMultiplier& unit = value.units();
  out["unit"] = unit.is_valid() ? ordered_json(unit.unit_name()) : ordered_json(nullptr);
  const std::optional<double> mks = parser::value_in_mks(value);
  out["mks"] = mks ? ordered_json(*mks) : ordered_json(nullptr);
  return out;
}

void add_kind_words(const parser::ParamItemParser& parser, const ParamOptionData* option, ordered_json& out) {
  if (option == parser.opt()) {
    out["ppt"] = parser.opt()->is_ppt();
    out["unconstrained"] = parser.opt()->is_unconstrained();
    out["type"] = parser.opt()->type() == parser::ParamOptData::discrete ? "discrete" : "continuous";
  } else if (option == parser.stat()) {
    static const char* const kDistributions[] = {"gauss", "uniform", "discrete", "lognormal", "distcompname"};
    auto type = static_cast<unsigned>(parser.stat()->type());
    out["distribution"] = type < 5 ? kDistributions[type] : "gauss";
    if (parser.stat()->is_dist_compname()) out["compname"] = parser.stat()->get_dist_compname();
  } else if (option == parser.tune()) {
    out["log_scale"] = parser.tune()->is_log_scale();
  }
}

ordered_json option_json(const parser::ParamItemParser& parser, const ParamOptionData& option) {
  ordered_json out;
  out["kind"] = parser.kind_name(&option);
  out["text"] = option.get_full_text();
  out["enabled"] = option.enabled();
  out["sweep"] = parser::sweep_type_name(option.sweep_type());
  parser::ParamOptionSweepType sweep = option.sweep_type();
  if (sweep >= parser::sweep_range) out["start"] = value_json(option.start());
  if (sweep == parser::sweep_range || sweep == parser::sweep_stepped_range) out["stop"] = value_json(option.stop());
  if (sweep == parser::sweep_stepped_range) out["step"] = value_json(option.step());
  add_kind_words(parser, &option, out);
  return out;
}

std::string describe_value(const ordered_json& value) {
  std::string text = value["value"].get<std::string>();
  if (text.empty()) text = "(empty)";
  text += value["unit"].is_null() ? ", no unit" : " " + value["unit"].get<std::string>();
  // Fifteen digits: 100 um reads "MKS 0.0001", not its binary neighbour.
  if (!value["mks"].is_null()) text += fmt::format(", MKS {:.15g}", value["mks"].get<double>());
  return text;
}

}  // namespace

ordered_json annotation_json(const parser::ParamItemParser& parser, const parser::AnnotationCheck& check,
                             const std::string& input) {
  ordered_json out;
  out["input"] = input;
  out["canonical"] = check.canonical;
  out["valid"] = !check.has(parser::AnnotationDiagnostic::error);
  if (!utf8::is_valid(input.begin(), input.end())) out["repaired"] = true;
  out["unit_type"] = parser.unit_type() ? ordered_json(parser.unit_type()->unit_type_name()) : ordered_json(nullptr);
  out["nominal"] = value_json(parser.get_nominal());
  ordered_json options = ordered_json::array();
  // Listed as they stand in the canonical text: the parser's list backwards.
  for (auto it = parser.options().rbegin(); it != parser.options().rend(); ++it) {
    options.push_back(option_json(parser, **it));
  }
  out["options"] = std::move(options);
  ordered_json diagnostics = ordered_json::array();
  for (const parser::AnnotationDiagnostic& d : check.diagnostics) {
    diagnostics.push_back({{"severity", d.severity == parser::AnnotationDiagnostic::error ? "error" : "warning"},
                           {"message", d.message}});
  }
  out["diagnostics"] = std::move(diagnostics);
  return out;
}

std::string describe_annotation(const parser::ParamItemParser& parser, const parser::AnnotationCheck& check,
                                const std::string& input) {
  ordered_json report = annotation_json(parser, check, input);
  std::string text;
  auto line = [&text](const std::string& label, const std::string& body) {
    text += fmt::format("{:<11}{}\n", label + ":", body);
  };
  std::string shown;
  utf8::replace_invalid(input.begin(), input.end(), std::back_inserter(shown));
  line("input", shown);
  line("canonical", report["canonical"].get<std::string>());
  line("valid", report["valid"].get<bool>() ? "yes" : "no");
  line("unit type", report["unit_type"].is_null() ? "none" : report["unit_type"].get<std::string>());
  line("nominal", describe_value(report["nominal"]));
  for (const ordered_json& option : report["options"]) {
    std::string sweep = option["sweep"].get<std::string>();
    std::string summary = (option["enabled"].get<bool>() ? "enabled, " : "disabled, ") + sweep;
    if (sweep == "invalid") {
      summary += " (written back as typed)";  // its words are not reliable then
    } else {
      if (option.contains("type")) summary += ", " + option["type"].get<std::string>();
      if (option.value("ppt", false)) summary += ", ppt";
      if (option.value("unconstrained", false)) summary += ", unconst";
      if (option.contains("distribution")) summary += ", " + option["distribution"].get<std::string>();
      if (option.contains("compname")) summary += " " + option["compname"].get<std::string>();
      if (option.value("log_scale", false)) summary += ", logScale";
    }
    line(option["kind"].get<std::string>(), summary);
    bool deviation = sweep == "deviation" || sweep == "percent deviation";
    if (option.contains("start")) line(deviation ? "  delta" : "  start", describe_value(option["start"]));
    if (option.contains("stop")) line("  stop", describe_value(option["stop"]));
    if (option.contains("step")) line("  step", describe_value(option["step"]));
  }
  return text;
}

}  // namespace qorin::tool
