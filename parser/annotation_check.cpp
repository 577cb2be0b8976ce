// check_annotation: the canonical text of one annotation and what is wrong
// with it, as the qorin tool reports it.
#include "parser/value_forms.h"

#include <qorin/parser.h>
#include <qorin/text.h>

namespace qorin::parser {

namespace {

void add(AnnotationCheck* check, AnnotationDiagnostic::Severity severity, std::string message) {
  check->diagnostics.push_back({severity, std::move(message)});
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The words after "+/-" in a typed option body when the deviation rule
// ignores them (three or more), else empty.
std::string_view ignored_deviation_words(std::string_view full_text) {
  const std::size_t open = full_text.find('{');
  if (open == std::string_view::npos || full_text.size() < open + 2) return {};
  const std::string_view body = full_text.substr(open + 1, full_text.size() - open - 2);
  std::size_t at = 0;
  while ((at = body.find("+/-", at)) != std::string_view::npos) {
    const bool word = (at == 0 || body[at - 1] == ' ') && (at + 3 == body.size() || body[at + 3] == ' ');
    if (word) break;
    at += 3;
  }
  if (at == std::string_view::npos) return {};
  const std::string_view rest = detail::trim_blanks(body.substr(at + 3));
  std::size_t words = 0;
  for (std::size_t i = 0; i < rest.size(); ++i) {
    if (rest[i] != ' ' && (i == 0 || rest[i - 1] == ' ')) ++words;
  }
  return words >= 3 ? rest : std::string_view{};
}

void check_option(const ParamItemParser& parser, const ParamOptionData& option, AnnotationCheck* check) {
  const std::string& text = option.get_full_text();
  if (option.is_invalid()) {
    const ParamOptionSweepType form = option.parsed_sweep_type();
    add(check, AnnotationDiagnostic::error,
        "invalid option " + quoted(text) + ": " +
            (form == sweep_invalid ? std::string("its body does not parse")
                                   : std::string(parser.kind_name(&option)) + " does not allow a " +
                                         (form == sweep_empty ? "sweep-less form" : sweep_type_name(form))));
    return;
  }
  const bool deviation = option.sweep_type() == sweep_delta || option.sweep_type() == sweep_percent_delta;
  const std::string_view lost = deviation ? ignored_deviation_words(text) : std::string_view{};
  if (!lost.empty()) add(check, AnnotationDiagnostic::warning, "option " + quoted(text) + " drops the words " + quoted(lost));
}

void check_nominal(const ParamItemParser& parser, const AnnotationSettings& settings, AnnotationCheck* check) {
  const ParserValue& nominal = parser.get_nominal();
  if (is_well_formed_nominal(nominal)) return;
  std::string message = "nominal " + quoted(nominal.value()) + " is not a number, variable, quoted string or file reference";
  if (settings.unit_type != nullptr) {
    message += " with a unit of type " + settings.unit_type->unit_type_name();
  } else if (settings.allow_any_unit) {
    message += " with a known unit";
  }
  add(check, AnnotationDiagnostic::warning, std::move(message));
}

// Under allow_any_unit the nominal's unit sets the type, so a unit that the
// plain form hides (temperature, angle) is written out: "value unit". Empty
// when the plain form carries everything.
std::string nominal_with_hidden_unit(const ParserValue& nominal, const AnnotationSettings& settings) {
  const units::UnitAndMultiplier& unit = nominal.units();
  if (!settings.allow_any_unit || !unit.is_valid() || unit.type()->uses_scale_factors()) return {};
  std::string value = nominal.value();
  if (!detail::is_plain_value(value)) value = "(" + value + ")";
  return value + (value.empty() ? "" : " ") + unit.unit_name();
}

}  // namespace

void check_annotation(ParamItemParser& parser, const std::string& text, const AnnotationSettings& settings,
                      AnnotationCheck* check) {
  check->diagnostics.clear();
  // Cleared first: switching the notation would re-form the last text's options.
  parser.clear();
  parser.set_unit_type(settings.unit_type);
  parser.allow_any_unit(settings.allow_any_unit);
  parser.set_use_dbmtow_functions(settings.use_dbmtow_functions);
  parser.parse(text, true);
  // Before reformat(): the options still hold their texts as typed.
  for (auto it = parser.options().rbegin(); it != parser.options().rend(); ++it) check_option(parser, **it, check);
  check_nominal(parser, settings, check);
  parser.reformat();
  parser.get_combined_string(&check->canonical);
  const std::string nominal = nominal_with_hidden_unit(parser.get_nominal(), settings);
  if (!nominal.empty()) check->canonical.replace(0, parser.get_nominal().combined_value().size(), nominal);
}

bool is_well_formed_nominal(const ParserValue& value) {
  // A value read with a unit had its form checked by the split, parenthesised
  // expressions included.
  return value.units().is_valid() || detail::is_plain_value(value.value());
}

std::string canonical_nominal(const ParserValue& value, const AnnotationSettings& settings) {
  std::string hidden = nominal_with_hidden_unit(value, settings);
  return hidden.empty() ? value.combined_value() : hidden;
}

std::optional<double> value_in_mks(const ParserValue& value) {
  if (!value.is_number()) return std::nullopt;
  const double x = toDouble_nothrow(value.value());
  const units::UnitAndMultiplier& unit = value.units();
  return unit.is_valid() ? units::convert_parm_value_to_mks_units(x, unit) : x;
}

AnnotationCheck check_annotation(const std::string& text, const AnnotationSettings& settings) {
  ParamItemParser parser;
  AnnotationCheck check;
  check_annotation(parser, text, settings, &check);
  return check;
}

}  // namespace qorin::parser
