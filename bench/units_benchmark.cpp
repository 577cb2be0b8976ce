// Unit lookup and value parsing beside their plain peers: a hash map of the
// same names, and copying the text plus strtod on it.
#include <qorin/parser.h>
#include <qorin/units.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using namespace qorin::units;

std::vector<std::string> all_unit_names() {
  std::vector<std::string> names;
  for (const UnitType& type : get_all_units()) {
    for (const UnitMultiplier& m : type.multipliers()) names.push_back(m.unit_name());
  }
  return names;
}

void BM_FindUnit_AllNames(benchmark::State& state) {
  const std::vector<std::string> names = all_unit_names();
  for (auto _ : state) {
    for (const std::string& name : names) benchmark::DoNotOptimize(find_unit(name.c_str()));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(names.size()));
}
BENCHMARK(BM_FindUnit_AllNames);

// Peer: a hash map from name to the first unit of that name.
void BM_FindUnit_AllNames_HashMapPeer(benchmark::State& state) {
  const std::vector<std::string> names = all_unit_names();
  std::unordered_map<std::string_view, UnitAndMultiplier> map;
  for (const std::string& name : names) map.emplace(name, find_unit(name.c_str()));
  for (auto _ : state) {
    for (const std::string& name : names) {
      benchmark::DoNotOptimize(map.find(std::string_view(name.c_str()))->second);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(names.size()));
}
BENCHMARK(BM_FindUnit_AllNames_HashMapPeer);

struct Typed {
  const char* text;
  const UnitType* type;
};

std::vector<Typed> parse_mix() {
  const UnitType* cap = find_unit_type("cap");
  const UnitType* freq = find_unit_type("freq");
  const UnitType* power = find_unit_type("power");
  return {{"10pF", cap},   {"1 kHz", freq},        {"x_1 GHz", freq},
          {"2.5", freq},   {"dbmtow(10)", power}, {"\"abc\" pF", cap}};
}

void BM_ParseValue_Mix(benchmark::State& state) {
  const std::vector<Typed> mix = parse_mix();
  qorin::parser::ParserValue value;
  for (auto _ : state) {
    for (const Typed& t : mix) {
      value.set_value_with_optional_unit_suffix(t.text, t.type, false, false);
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(mix.size()));
}
BENCHMARK(BM_ParseValue_Mix);

// Baseline: what any reader of these texts must at least do.
void BM_ParseValue_Mix_CopyStrtodBaseline(benchmark::State& state) {
  const std::vector<Typed> mix = parse_mix();
  for (auto _ : state) {
    for (const Typed& t : mix) {
      std::string copy(t.text);
      char* end = nullptr;
      benchmark::DoNotOptimize(std::strtod(copy.c_str(), &end));
      benchmark::DoNotOptimize(end);
      benchmark::DoNotOptimize(copy);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(mix.size()));
}
BENCHMARK(BM_ParseValue_Mix_CopyStrtodBaseline);

}  // namespace
