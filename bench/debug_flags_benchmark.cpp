// Debug flags: the cost of asking a flag whether it is set, and of reading a
// long _QDX_DEBUG_FLAGS with the hand-written matcher and with std::regex.
//
// std::regex overflows the stack on long inputs, which no handler survives:
// the largest size it reads is found by trial in child processes (a binary
// search to within 1/16) and it is measured at 7/8 of that.
#include <qorin/debug.h>

#include "debug/flags/flag_settings_parser.h"
#include "fuzz/regex_flag_settings.h"

#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <string>

namespace {

using qorin::Debug::Flag;

Flag& benchmarkFlag() {
  static Flag flag("BENCHMARK_FLAG");
  return flag;
}

void BM_FlagIsSet(benchmark::State& state) {
  const Flag& flag = benchmarkFlag();
  for (auto _ : state) benchmark::DoNotOptimize(flag.isSet());
}
BENCHMARK(BM_FlagIsSet);
BENCHMARK(BM_FlagIsSet)->Threads(2);

// Peer: an accessor that takes the flag's mutex, as isSet() would without
// its atomic copy.
void BM_FlagIsNumeric(benchmark::State& state) {
  const Flag& flag = benchmarkFlag();
  for (auto _ : state) benchmark::DoNotOptimize(flag.isNumeric());
}
BENCHMARK(BM_FlagIsNumeric);
BENCHMARK(BM_FlagIsNumeric)->Threads(2);

// The two shapes of a long variable, `size` characters each.
std::string oneQuotedValue(std::size_t size) { return "BIG='" + std::string(size - 10, 'x') + "',N=1"; }
std::string manyEntries(std::size_t size) {
  std::string text;
  for (int i = 0; text.size() + 16 < size; ++i) text += "F" + std::to_string(i) + "=1,";
  return text + std::string(size - text.size() - 2, 'L') + "=1";
}
using Shape = std::string (*)(std::size_t);

bool regexSurvives(const std::string& text) {
  const pid_t child = fork();
  if (child == 0) {
    qorin::testing::regexFlagSettings(text);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::size_t regexLimit(Shape shape) {
  static std::map<Shape, std::size_t> limits;
  auto found = limits.find(shape);
  if (found != limits.end()) return found->second;
  std::size_t good = 1024, bad = 1 << 20;
  if (regexSurvives(shape(bad))) good = bad;
  while (bad - good > good / 16) {
    const std::size_t middle = (good + bad) / 2;
    (regexSurvives(shape(middle)) ? good : bad) = middle;
  }
  return limits[shape] = good;
}

template <typename Parse>
void parseBenchmark(benchmark::State& state, Parse parse, const std::string& text, std::size_t limit) {
  for (auto _ : state) benchmark::DoNotOptimize(parse(text));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  state.counters["chars"] = static_cast<double>(text.size());
  if (limit != 0) state.counters["regex_limit"] = static_cast<double>(limit);
}

const bool registered = [] {
  const auto matcher = [](const std::string& text) { return qorin::Debug::detail::parseFlagSettings(text); };
  const auto regex = [](const std::string& text) { return qorin::testing::regexFlagSettings(text); };
  const std::pair<const char*, Shape> shapes[] = {{"quoted", oneQuotedValue}, {"entries", manyEntries}};
  for (const auto& [name, shape] : shapes) {
    const std::string prefix = std::string("BM_FlagSettings/") + name;
    benchmark::RegisterBenchmark((prefix + "/matcher/1MB").c_str(), [matcher, shape = shape](benchmark::State& state) {
      parseBenchmark(state, matcher, shape(1 << 20), 0);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((prefix + "/matcher/regex_size").c_str(), [matcher, shape = shape](benchmark::State& state) {
      const std::size_t limit = regexLimit(shape);
      parseBenchmark(state, matcher, shape(limit / 8 * 7), limit);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((prefix + "/std_regex/regex_size").c_str(), [regex, shape = shape](benchmark::State& state) {
      const std::size_t limit = regexLimit(shape);
      parseBenchmark(state, regex, shape(limit / 8 * 7), limit);
    })->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
