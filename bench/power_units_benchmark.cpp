// dBm and dBW conversions beside the C runtime's pow and log10 on the same
// values (which the library may not call: their bits differ between
// platforms), and the batch conversions beside a plain loop.
#include <qorin/units.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

using namespace qorin::units;

constexpr std::size_t kValues = 4096;

// Random dBm over the range RF designs use.
std::vector<double> random_dbm() {
  std::mt19937_64 random(20);
  std::uniform_real_distribution<double> dbm(-200.0, 100.0);
  std::vector<double> values(kValues);
  for (double& v : values) v = dbm(random);
  return values;
}

// What people type: whole and tenth dBm from -150 to 50, in a shuffled order.
std::vector<double> typed_dbm() {
  std::vector<double> values(kValues);
  for (std::size_t i = 0; i < kValues; ++i) values[i] = static_cast<double>((i * 1237) % 2001) * 0.1 - 150.0;
  for (std::size_t i = 0; i < kValues; i += 3) values[i] = std::round(values[i]);
  return values;
}

std::vector<double> random_watts() {
  std::vector<double> values = random_dbm();
  for (double& v : values) v = std::pow(10.0, (v - 30.0) * 0.1);
  return values;
}

template <typename Convert>
void run_each(benchmark::State& state, const std::vector<double>& values, Convert convert) {
  for (auto _ : state) {
    for (double v : values) benchmark::DoNotOptimize(convert(v));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(values.size()));
}

const UnitAndMultiplier dbm = find_unit("dBm");

double dbm_to_watts(double v) { return convert_parm_value_to_mks_units(v, dbm); }
double dbm_to_watts_std_pow(double v) { return std::pow(10.0, (v - 30.0) * 0.1); }
double watts_to_dbm(double w) {
  double result = 0;
  convert_parm_value_from_mks_units(w, dbm, &result);
  return result;
}
double watts_to_dbm_std_log10(double w) { return w > 0.0 ? 10.0 * std::log10(w) + 30.0 : 0.0; }

void BM_DbmToWatts_Random(benchmark::State& state) { run_each(state, random_dbm(), dbm_to_watts); }
void BM_DbmToWatts_Random_StdPowPeer(benchmark::State& state) { run_each(state, random_dbm(), dbm_to_watts_std_pow); }
void BM_DbmToWatts_Typed(benchmark::State& state) { run_each(state, typed_dbm(), dbm_to_watts); }
void BM_DbmToWatts_Typed_StdPowPeer(benchmark::State& state) { run_each(state, typed_dbm(), dbm_to_watts_std_pow); }
void BM_WattsToDbm_Random(benchmark::State& state) { run_each(state, random_watts(), watts_to_dbm); }
void BM_WattsToDbm_Random_StdLog10Peer(benchmark::State& state) {
  run_each(state, random_watts(), watts_to_dbm_std_log10);
}
BENCHMARK(BM_DbmToWatts_Random);
BENCHMARK(BM_DbmToWatts_Random_StdPowPeer);
BENCHMARK(BM_DbmToWatts_Typed);
BENCHMARK(BM_DbmToWatts_Typed_StdPowPeer);
BENCHMARK(BM_WattsToDbm_Random);
BENCHMARK(BM_WattsToDbm_Random_StdLog10Peer);

void BM_DbmToWatts_Batch(benchmark::State& state) {
  const std::vector<double> in = random_dbm();
  std::vector<double> out(in.size());
  for (auto _ : state) {
    convert_parm_values_to_mks_units(in.data(), in.size(), dbm, out.data());
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(in.size()));
}
BENCHMARK(BM_DbmToWatts_Batch);

// A linear unit: one call per value, the batch call, and the bare loop.
const UnitAndMultiplier milliwatts = find_unit("mW");

void BM_MilliwattsToWatts_EachCall(benchmark::State& state) {
  run_each(state, random_dbm(), [](double v) { return convert_parm_value_to_mks_units(v, milliwatts); });
}
void BM_MilliwattsToWatts_Batch(benchmark::State& state) {
  const std::vector<double> in = random_dbm();
  std::vector<double> out(in.size());
  for (auto _ : state) {
    convert_parm_values_to_mks_units(in.data(), in.size(), milliwatts, out.data());
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(in.size()));
}
void BM_MilliwattsToWatts_Batch_PlainLoopPeer(benchmark::State& state) {
  const std::vector<double> in = random_dbm();
  std::vector<double> out(in.size());
  const double factor = milliwatts.multiplier()->multipler();
  for (auto _ : state) {
    const double* source = in.data();
    double* target = out.data();
    benchmark::DoNotOptimize(source);
    for (std::size_t i = 0; i < in.size(); ++i) target[i] = source[i] * factor;
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(in.size()));
}
void BM_WattsToMilliwatts_Batch(benchmark::State& state) {
  const std::vector<double> in = random_watts();
  std::vector<double> out(in.size());
  for (auto _ : state) {
    benchmark::DoNotOptimize(convert_parm_values_from_mks_units(in.data(), in.size(), milliwatts, out.data()));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(in.size()));
}
BENCHMARK(BM_MilliwattsToWatts_EachCall);
BENCHMARK(BM_MilliwattsToWatts_Batch);
BENCHMARK(BM_MilliwattsToWatts_Batch_PlainLoopPeer);
BENCHMARK(BM_WattsToMilliwatts_Batch);

}  // namespace
