// What the tool shows of one parsed annotation: the canonical text, whether
// it is valid, the nominal and each option, as lines for a reader or as JSON.
#pragma once

#include <qorin/parser.h>

#include <nlohmann/json.hpp>

#include <string>

namespace qorin::tool {

// Example (capacitance type, "10 pF opt{ 1 pF to 20 pF }"):
//   input:     10 pF opt{ 1 pF to 20 pF }
//   canonical: 10pF opt{ 1pF to 20pF }
//   valid:     yes
//   unit type: cap
//   nominal:   10 pF, MKS 1e-11
//   opt:       enabled, range, continuous
//     start:   1 pF, MKS 1e-12
//     stop:    20 pF, MKS 2e-11
// Bytes of `input` that are not UTF-8 are shown as U+FFFD.
std::string describe_annotation(const parser::ParamItemParser& parser, const parser::AnnotationCheck& check,
                                const std::string& input);

// The same as one JSON object: input, canonical, valid, repaired (only when
// the input is not valid UTF-8), unit_type, nominal {text, value, unit, mks},
// options [{kind, text, enabled, sweep, start, stop, step, and the kind's own
// words}] and diagnostics [{severity, message}]; absent values are null.
// Strings hold raw bytes: dump them with error_handler_t::replace.
nlohmann::ordered_json annotation_json(const parser::ParamItemParser& parser, const parser::AnnotationCheck& check,
                                       const std::string& input);

}  // namespace qorin::tool
