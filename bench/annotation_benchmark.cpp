// Annotation throughput over generated realistic annotations, parse alone
// and parse + reformat + canonical text, beside the floor of any such parser: splitting the
// same lines into words and reading every number with strtod.
#include <qorin/parser.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

struct Line {
  const qorin::units::UnitType* type;
  std::string text;
};

// 10,000+ annotations: a nominal with a unit, then 0 to 3 options of
// different kinds in the forms users write (ranges, steps, deviations, ppt,
// discrete, logScale, disabled ones). Fixed seed: every run sees the same text.
const std::vector<Line>& corpus() {
  static const std::vector<Line> lines = [] {
    struct Family { const char* type; std::vector<const char*> units; };
    const Family families[] = {
        {"freq", {"Hz", "kHz", "MHz", "GHz"}}, {"res", {"Ohm", "kOhm", "mOhm"}}, {"cap", {"pF", "nF", "fF", "uF"}},
        {"ind", {"nH", "pH", "uH"}},           {"lng", {"um", "mm", "mil"}},     {"volt", {"V", "mV"}},
        {"power", {"dBm", "mW", "W"}},
    };
    std::mt19937 random(12345);
    auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    auto number = [&] {
      static const char* const kNumbers[] = {"1", "2.2", "10", "47", "0.5", "100", "3.3", "1e-3", "2.4", "150", "0.01", "5"};
      return std::string(kNumbers[pick(12)]);
    };
    std::vector<Line> out;
    for (int i = 0; i < 12000; ++i) {
      const Family& family = families[pick(7)];
      auto value = [&] {
        const char* unit = family.units[static_cast<std::size_t>(pick(static_cast<int>(family.units.size())))];
        return number() + (pick(2) ? " " : "") + unit;
      };
      std::string text = value();
      int kinds[] = {0, 1, 2, 3};
      std::shuffle(std::begin(kinds), std::end(kinds), random);
      int options = pick(4);
      for (int k = 0; k < options; ++k) {
        text += pick(8) == 0 ? " no" : " ";
        switch (kinds[k]) {
          case 0:
            text += pick(3) == 0   ? "opt{ discrete " + value() + " to " + value() + " by " + value() + " }"
                    : pick(2) == 0 ? "opt{ ppt " + value() + " to " + value() + " }"
                                   : "opt{ " + value() + " to " + value() + " }";
            break;
          case 1:
            text += pick(2) ? "stat{ gauss +/- " + number() + " % }" : "stat{ uniform " + value() + " to " + value() + " }";
            break;
          case 2:
            text += pick(2) ? "tune{ " + value() + " to " + value() + " by " + value() + " }"
                            : "tune{ " + value() + " to " + value() + " logScale }";
            break;
          default:
            text += pick(2) ? "doe{ +/- " + number() + " % }" : "doe{ " + value() + " to " + value() + " }";
            break;
        }
      }
      out.push_back({qorin::units::find_unit_type(family.type), std::move(text)});
    }
    return out;
  }();
  return lines;
}

// Every line parsed with the line's unit type or, as `qorin annotate
// --any-unit` reads, with the type the nominal picks; with `canonical`, also
// re-formed and written back as canonical text. items_per_second is
// annotations per second, against a goal of 1,000,000 for each.
void annotations(benchmark::State& state, bool any_unit, bool canonical) {
  const auto& lines = corpus();
  for (auto _ : state) {
    for (const Line& line : lines) {
      qorin::parser::ParamItemParser parser;
      if (any_unit) {
        parser.allow_any_unit(true);
      } else {
        parser.set_unit_type(line.type);
      }
      parser.parse(line.text, true);
      if (canonical) {
        parser.reformat();
        std::string text = parser.get_combined_string();
        benchmark::DoNotOptimize(text.data());
      }
      benchmark::DoNotOptimize(&parser);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines.size()));
}

void BM_AnnotationParse(benchmark::State& state) { annotations(state, false, false); }
BENCHMARK(BM_AnnotationParse);

void BM_AnnotationParseCanonical(benchmark::State& state) { annotations(state, false, true); }
BENCHMARK(BM_AnnotationParseCanonical);

void BM_AnnotationParseAnyUnit(benchmark::State& state) { annotations(state, true, false); }
BENCHMARK(BM_AnnotationParseAnyUnit);

void BM_AnnotationParseCanonicalAnyUnit(benchmark::State& state) { annotations(state, true, true); }
BENCHMARK(BM_AnnotationParseCanonicalAnyUnit);

// The floor: words at blanks, strtod on every word that starts like a number.
void BM_AnnotationBaselineSplitStrtod(benchmark::State& state) {
  const auto& lines = corpus();
  for (auto _ : state) {
    double sum = 0;
    for (const Line& line : lines) {
      std::vector<std::string> words;
      const std::string& text = line.text;
      std::size_t i = 0;
      while (i < text.size()) {
        while (i < text.size() && text[i] == ' ') ++i;
        std::size_t begin = i;
        while (i < text.size() && text[i] != ' ') ++i;
        if (i > begin) words.emplace_back(text, begin, i - begin);
      }
      for (const std::string& word : words) {
        char c = word[0];
        if ((c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.') sum += std::strtod(word.c_str(), nullptr);
      }
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines.size()));
}
BENCHMARK(BM_AnnotationBaselineSplitStrtod);

}  // namespace
