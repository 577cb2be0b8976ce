// The UTF conversions beside a plain copy (ASCII) and the bare utfcpp calls
// (mixed text); the natural-order comparator beside operator< in std::sort.
#include <qorin/text.h>

#include <benchmark/benchmark.h>
#include <utf8.h>

#include <algorithm>
#include <random>

namespace {

std::string ascii_text(std::size_t size) {
  std::string text;
  while (text.size() < size) text += "C:/Projects/filter_3GHz/layout.sch ";
  text.resize(size);
  return text;
}

// Mostly ASCII with accented letters, a euro sign and an emoji, as user
// names and design titles are.
std::string mixed_text(std::size_t size) {
  std::string text;
  while (text.size() < size) text += "R\xC3\xA9sonateur \xE2\x82\xAC 5 GHz \xF0\x9F\x98\x80 ";
  text.resize(size);  // may cut a character: drop its remains
  while (!utf8::is_valid(text.begin(), text.end())) text.pop_back();
  return text;
}

void Utf16_Ascii_Qorin(benchmark::State& state) {
  const std::string text = ascii_text(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qorin::toUtf16(text));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf16_Ascii_WideningCopy(benchmark::State& state) {
  const std::string text = ascii_text(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(std::u16string(text.begin(), text.end()));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf8_Ascii_Qorin(benchmark::State& state) {
  const std::u16string units = qorin::toUtf16(ascii_text(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(qorin::toKString(units));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf8_Ascii_NarrowingCopy(benchmark::State& state) {
  const std::u16string units = qorin::toUtf16(ascii_text(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(std::string(units.begin(), units.end()));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf16_Mixed_Qorin(benchmark::State& state) {
  const std::string text = mixed_text(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qorin::toUtf16(text));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf16_Mixed_Utfcpp(benchmark::State& state) {
  const std::string text = mixed_text(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(utf8::utf8to16(text));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf8_Mixed_Qorin(benchmark::State& state) {
  const std::u16string units = utf8::utf8to16(mixed_text(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(qorin::toKString(units));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
void Utf8_Mixed_Utfcpp(benchmark::State& state) {
  const std::u16string units = utf8::utf8to16(mixed_text(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(utf8::utf16to8(units));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

// Typical names of a project folder: mixed case, numbered, some zero-padded.
std::vector<std::string> file_names(std::size_t count) {
  const char* stems[] = {"IMG_", "img_", "Report ", "layout_v", "Filter", "sweep-", "S-param"};
  const char* extensions[] = {".jpg", ".PNG", ".sch", ".s2p", ".txt", "_final.sch"};
  std::mt19937 random(2024);
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t k = 0; k < count; ++k) {
    std::string number = std::to_string(random() % 20000);
    if (random() % 3 == 0) number.insert(0, 5 - std::min<std::size_t>(number.size(), 5), '0');
    names.push_back(stems[random() % 7] + number + extensions[random() % 6]);
  }
  return names;
}

template <class Less>
void sort_names(benchmark::State& state, Less less) {
  const std::vector<std::string> names = file_names(100000);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<std::string> copy = names;
    state.ResumeTiming();
    std::sort(copy.begin(), copy.end(), less);
    benchmark::DoNotOptimize(copy.data());
  }
}
void SortFileNames_Qorin(benchmark::State& state) { sort_names(state, qorin::CompareStringNumberAwareIgnoreCase()); }
void SortFileNames_OperatorLess(benchmark::State& state) { sort_names(state, std::less<std::string>()); }

}  // namespace

BENCHMARK(Utf16_Ascii_Qorin)->Arg(64)->Arg(4096);
BENCHMARK(Utf16_Ascii_WideningCopy)->Arg(64)->Arg(4096);
BENCHMARK(Utf8_Ascii_Qorin)->Arg(64)->Arg(4096);
BENCHMARK(Utf8_Ascii_NarrowingCopy)->Arg(64)->Arg(4096);
BENCHMARK(Utf16_Mixed_Qorin)->Arg(64)->Arg(4096);
BENCHMARK(Utf16_Mixed_Utfcpp)->Arg(64)->Arg(4096);
BENCHMARK(Utf8_Mixed_Qorin)->Arg(64)->Arg(4096);
BENCHMARK(Utf8_Mixed_Utfcpp)->Arg(64)->Arg(4096);
BENCHMARK(SortFileNames_Qorin)->Unit(benchmark::kMillisecond);
BENCHMARK(SortFileNames_OperatorLess)->Unit(benchmark::kMillisecond);
