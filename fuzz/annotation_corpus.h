// The round-trip oracle: generated annotations (the fuzz targets' seeds) and
// what an annotation means. The parser tests and the corpus that the Linux
// and Windows builds of the tool must read alike use it too. Header-only: the
// fuzz build links no test support library.
#pragma once

#include <qorin/parser.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace qorin::testing {

// Lines built from every unit of the catalogue, values at the edges of the
// double range, odd value forms (expressions, quotes, file references,
// dbmtow calls, unbalanced parentheses) and every option kind and sweep
// form, right and wrong. The same seed gives the same lines everywhere.
//
// Example: AnnotationCorpus(1).next() => "627.0 dBm nodoe{ 1e6 dbm to 8.9e1 Celsius }" (say)
class AnnotationCorpus {
 public:
  explicit AnnotationCorpus(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}

  std::string next() {
    std::string line = value(true);
    const int options = pick(4);
    for (int i = 0; i < options; ++i) line += " " + option();
    return line;
  }

 private:
  // xorshift32: fixed arithmetic, unlike the standard distributions.
  std::uint32_t raw() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_;
  }
  int pick(int n) { return static_cast<int>(raw() % static_cast<std::uint32_t>(n)); }
  template <std::size_t N>
  const char* one_of(const char* const (&list)[N]) {
    return list[pick(static_cast<int>(N))];
  }

  std::string number() {
    static const char* const kEdges[] = {"0", "1", "-5", "627.0", "2.5e-3", "1e-308", "4.9e-324", "2.2250738585072014e-308",
                                         "1.7976931348623157e308", "1e308", "1e999999", "-1e-320", "1e-21", "1.80778e6",
                                         "8.95083e1", "3.4028234663852886e38", "0.1", "99.99", "1e+5", ".5"};
    if (pick(3) == 0) return kEdges[pick(sizeof kEdges / sizeof *kEdges)];
    return std::to_string(pick(2000) - 1000) + (pick(2) ? "." + std::to_string(pick(1000)) : "") +
           (pick(3) == 0 ? "e" + std::to_string(pick(40) - 20) : "");
  }

  std::string unit() {
    const auto& all = units::get_all_units();
    const units::UnitType& type = all[static_cast<std::size_t>(pick(static_cast<int>(all.size())))];
    if (type.multipliers().empty() || pick(6) == 0) return one_of({"dbm", "%", "None", "xF", "k", "m", "M"});
    const units::UnitMultiplier& m = type.multipliers()[static_cast<std::size_t>(pick(static_cast<int>(type.multipliers().size())))];
    return m.suffix() != 0 && pick(3) == 0 ? std::string(1, m.suffix()) : m.unit_name();
  }

  std::string bare() {
    switch (pick(10)) {
      case 0: return one_of({"f0", "x_1", "_a", "a1b"});
      case 1: return one_of({"'a'", "\"b\"", "'it\\'s'", "\"a\"\"b\""});
      case 2: return "file{ds1, " + number() + "}";
      case 3: return one_of({"(a)*(b)", "(a+b)", "((x))", "(((()))", "(a", "a)", "( )", "(')')", "(5)"});
      case 4: return std::string(pick(2) ? "dbmtow" : "dbwtow") + one_of({"(", "( ", "(("}) + number() +
                     one_of({")", " )", "))", ")*(2)"});
      default: return number();
    }
  }

  // One value as typed: a bare form, then maybe a unit, glued or not.
  std::string value(bool nominal) {
    std::string text = bare();
    if (pick(4) != 0) text += (pick(2) ? " " : "") + unit();
    return nominal && pick(20) == 0 ? "" : text;
  }

  std::string option() {
    static const char* const kKinds[] = {"opt", "stat", "tune", "doe"};
    std::string kind = kKinds[pick(4)];
    std::string head;
    if (kind == "opt") head = one_of({"", "", "ppt ", "discrete ", "ppt discrete ", "unconst "});
    if (kind == "stat") head = one_of({"gauss ", "uniform ", "discrete ", "lognormal ", "", "distcompname = a b "});
    std::string sweep;
    switch (pick(6)) {
      case 0: sweep = "+/- " + value(false); break;
      case 1: sweep = value(false) + " to " + value(false); break;
      case 2: sweep = value(false) + " to " + value(false) + " by " + value(false); break;
      case 3: sweep = "+/- " + number() + " %"; break;
      case 4: sweep = one_of({"", "+/-", "+/- 5 % 7", "1 to", "to 2", "a b c to 1"}); break;
      default: sweep = value(false) + " to " + value(false); break;
    }
    if (kind == "tune" && pick(2)) sweep += " logScale";
    return std::string(pick(5) == 0 ? "no" : "") + kind + (pick(8) == 0 ? " {" : "{") + " " + head + sweep + " }";
  }

  std::uint32_t state_;
};

// What an annotation means, as one comparable line: the nominal's value and
// unit, then per option its kind, enabled flag, sweep form, the kind's words
// and the sweep's values. An invalid option means its text. A type without
// scale factors has one unit of factor 1, so naming it or not is the same.
inline std::string unit_meaning(const units::UnitAndMultiplier& unit) {
  const units::UnitType* type = unit.type();
  std::string text = type ? type->unit_type_name() : "-";
  if (unit.multiplier()) {
    text += "/" + unit.unit_name();
  } else if (type && !type->uses_scale_factors() && !type->multipliers().empty()) {
    text += "/" + type->multipliers().front().unit_name();
  }
  return text;
}

inline std::string value_meaning(const parser::ParserValue& value) {
  return "[" + value.value() + "]" + unit_meaning(value.units());
}

inline std::string annotation_meaning(const parser::ParamItemParser& parser) {
  using namespace qorin::parser;
  std::string text = value_meaning(parser.get_nominal());
  for (auto it = parser.options().rbegin(); it != parser.options().rend(); ++it) {
    const ParamOptionData& option = **it;
    text += std::string(" | ") + parser.kind_name(&option) + (option.enabled() ? " on " : " off ");
    if (option.is_invalid()) {
      text += "invalid " + option.get_full_text();
      continue;
    }
    text += sweep_type_name(option.sweep_type());
    if (const auto* opt = dynamic_cast<const ParamOptData*>(&option)) {
      text += " ppt=" + std::to_string(opt->is_ppt()) + " type=" + std::to_string(opt->type()) +
              " unconst=" + std::to_string(opt->is_unconstrained());
    } else if (const auto* stat = dynamic_cast<const ParamStatData*>(&option)) {
      text += " dist=" + std::to_string(stat->type()) + " name=" + stat->get_dist_compname();
    } else if (const auto* tune = dynamic_cast<const ParamTuneData*>(&option)) {
      text += " log=" + std::to_string(tune->is_log_scale());
    }
    const ParamOptionSweepType sweep = option.sweep_type();
    if (sweep >= sweep_range) text += " " + value_meaning(option.start());
    if (sweep == sweep_range || sweep == sweep_stepped_range) text += " " + value_meaning(option.stop());
    if (sweep == sweep_stepped_range) text += " " + value_meaning(option.step());
  }
  return text;
}

// Every setting the tool offers: each unit type, none, and any unit, each
// with the dbmtow notation on and off.
inline std::vector<parser::AnnotationSettings> all_annotation_settings() {
  std::vector<parser::AnnotationSettings> all;
  for (bool dbmtow : {true, false}) {
    for (const units::UnitType& type : units::get_all_units()) all.push_back({&type, false, dbmtow});
    all.push_back({nullptr, false, dbmtow});
    all.push_back({nullptr, true, dbmtow});
  }
  return all;
}

// Writes `count` generated annotations, each behind a first byte that picks
// one of `settings_count` settings, into the first corpus folder named on a
// fuzzer's command line (for LLVMFuzzerInitialize); nothing when none is.
inline void seed_corpus_folder(int argc, char** argv, std::uint32_t seed, int count, int settings_count) {
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path dir = argv[i];
    std::error_code error;
    if (argv[i][0] == '-' || !std::filesystem::is_directory(dir, error)) continue;
    AnnotationCorpus corpus(seed);
    for (int n = 0; n < count; ++n) {
      std::ofstream out(dir / ("generated-" + std::to_string(n)), std::ios::binary);
      out << static_cast<char>(n % settings_count) << corpus.next();
    }
    return;
  }
}

}  // namespace qorin::testing
