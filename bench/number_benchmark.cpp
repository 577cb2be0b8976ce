// Number text beside its peers, on the short texts users type. Each
// iteration converts the whole mix, so per-iteration times compare directly.
#include <qorin/text.h>

#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>
#include <fmt/format.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::vector<std::string>& number_texts() {
  static const std::vector<std::string> texts = {
      "1", "2.5", "-0.001", "1e-12", "10", "3.14159", "100e3", " 42", "0.5", "-17",
      "6.02214076e23", "1000", "0.1", "255", "-3.5e-7", "12.75"};
  return texts;
}

const std::vector<double>& numbers() {
  static const std::vector<double> values = {0.1, 1.5, 1e20, 123456.789, -0.001, 3.14159265358979,
                                             42.0, 6.02214076e23, 1e-12, 1000.0, -17.25, 0.333333333};
  return values;
}

template <class Parse>
void parse_mix(benchmark::State& state, Parse parse) {
  for (auto _ : state) {
    for (const std::string& text : number_texts()) benchmark::DoNotOptimize(parse(text));
  }
}

template <class Format>
void format_mix(benchmark::State& state, Format format) {
  for (auto _ : state) {
    for (double x : numbers()) {
      benchmark::DoNotOptimize(x);
      format(x);
    }
  }
}

void NumberParse_toDouble_nothrow(benchmark::State& state) {
  parse_mix(state, [](const std::string& text) { return qorin::toDouble_nothrow(text); });
}

void NumberParse_strtod(benchmark::State& state) {
  parse_mix(state, [](const std::string& text) { return std::strtod(text.c_str(), nullptr); });
}

void NumberParse_std_from_chars(benchmark::State& state) {
  parse_mix(state, [](const std::string& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
  });
}

void NumberParse_fast_float(benchmark::State& state) {
  parse_mix(state, [](const std::string& text) {
    double value = 0;
    fast_float::from_chars(text.data(), text.data() + text.size(), value);
    return value;
  });
}

void NumberParse_isValidNumber(benchmark::State& state) {
  parse_mix(state, [](const std::string& text) { return qorin::isValidNumber(text); });
}

void NumberFormat_fromDouble(benchmark::State& state) {
  format_mix(state, [](double x) { benchmark::DoNotOptimize(qorin::fromDouble(x, qorin::general, 6, 0)); });
}

void NumberFormat_ostringstream(benchmark::State& state) {
  format_mix(state, [](double x) {
    std::ostringstream stream;
    stream.precision(6);
    stream << x;
    benchmark::DoNotOptimize(stream.str());
  });
}

void NumberFormat_snprintf(benchmark::State& state) {
  format_mix(state, [](double x) {
    char text[64];
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%.6g", x));
    benchmark::DoNotOptimize(text);
  });
}

void NumberFormat_fmt_format(benchmark::State& state) {
  format_mix(state, [](double x) { benchmark::DoNotOptimize(fmt::format("{:.6g}", x)); });
}

void NumberFormat_to_chars(benchmark::State& state) {
  format_mix(state, [](double x) {
    char text[64];
    benchmark::DoNotOptimize(std::to_chars(text, text + sizeof text, x, std::chars_format::general, 6));
    benchmark::DoNotOptimize(text);
  });
}

}  // namespace

BENCHMARK(NumberParse_toDouble_nothrow);
BENCHMARK(NumberParse_strtod);
BENCHMARK(NumberParse_std_from_chars);
BENCHMARK(NumberParse_fast_float);
BENCHMARK(NumberParse_isValidNumber);
BENCHMARK(NumberFormat_fromDouble);
BENCHMARK(NumberFormat_ostringstream);
BENCHMARK(NumberFormat_snprintf);
BENCHMARK(NumberFormat_fmt_format);
BENCHMARK(NumberFormat_to_chars);
