// Path normalization in both styles beside std::filesystem's lexically_normal
// on the same texts; Path equality, case-insensitive equality, beside
// std::filesystem::path == and std::string ==;
// directory iteration through the wrapper beside the standard iterator.
#include <qorin/fs.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <vector>

namespace {

// Project paths as users type them: most need some normalizing.
const std::vector<std::string>& corpus() {
  static const std::vector<std::string> texts = {
      "/home/user/Projects/filter_3GHz/../filter_5GHz/./layout/schematic.sch",
      "designs/amp/./v2/../v3/netlist.cir",
      "/data/results//sweep_01/s-params.s2p",
      "a/b/c/d/e/f/../../g/h/",
      "/opt/suite/lib/qorin/../../share/units.db",
      "simple/path/without/dots.txt",
      "../../shared/models/transistor.lib",
      "/w/./x/./y/./z/",
  };
  return texts;
}

void Normalize_Qorin_Posix(benchmark::State& state) {
  for (auto _ : state)
    for (const std::string& text : corpus()) benchmark::DoNotOptimize(qorin::normalize_path(text, qorin::PathStyle::posix));
}
void Normalize_Qorin_Windows(benchmark::State& state) {
  for (auto _ : state)
    for (const std::string& text : corpus())
      benchmark::DoNotOptimize(qorin::normalize_path(text, qorin::PathStyle::windows));
}
void Normalize_StdLexicallyNormal(benchmark::State& state) {
  for (auto _ : state)
    for (const std::string& text : corpus())
      benchmark::DoNotOptimize(std::filesystem::path(text).lexically_normal().native());
}
BENCHMARK(Normalize_Qorin_Posix);
BENCHMARK(Normalize_Qorin_Windows);
BENCHMARK(Normalize_StdLexicallyNormal);

// Two equal 60-character paths that differ only in letter case, and the
// peers on equal texts: what callers would use without the library.
const std::string kLower = "c:\\projects\\filter_3ghz\\layout_rev_b\\schematic_version_2.sch";
const std::string kUpper = "C:\\Projects\\Filter_3GHz\\Layout_Rev_B\\Schematic_Version_2.SCH";

void PathEqual_CaseInsensitive(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(qorin::compare_paths(kLower, kUpper, qorin::PathStyle::windows) == 0);
}
// Path == in the native style: on Linux a byte comparison of equal texts.
void PathEqual_QorinPath(benchmark::State& state) {
  const qorin::Path a(kLower), b(kLower);
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    benchmark::DoNotOptimize(a == b);
  }
}
void PathEqual_StdPath(benchmark::State& state) {
  const std::filesystem::path a(kLower), b(kLower);
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    benchmark::DoNotOptimize(a == b);
  }
}
void PathEqual_StdString(benchmark::State& state) {
  const std::string a(kLower), b(kLower);
  for (auto _ : state) {
    benchmark::DoNotOptimize(&a);
    benchmark::DoNotOptimize(&b);
    benchmark::DoNotOptimize(a == b);
  }
}
BENCHMARK(PathEqual_CaseInsensitive);
BENCHMARK(PathEqual_QorinPath);
BENCHMARK(PathEqual_StdPath);
BENCHMARK(PathEqual_StdString);

// 10,000 empty files, made once for all iteration runs.
const qorin::TemporaryDirectory& full_directory() {
  static const qorin::TemporaryDirectory dir = [] {
    qorin::TemporaryDirectory made("qorin-bench");
    for (int i = 0; i < 10000; ++i) {
      qorin::Path file = made.path();
      file /= qorin::Path("entry_" + std::to_string(i) + ".dat");
      std::fclose(file.fopen("wb"));
    }
    return made;
  }();
  return dir;
}

void Iterate_Qorin(benchmark::State& state) {
  const qorin::Path& dir = full_directory().path();
  for (auto _ : state)
    for (qorin::DirectoryIterator it(dir), end; it != end; ++it) benchmark::DoNotOptimize(it->as_std_directory_entry());
}
void Iterate_Std(benchmark::State& state) {
  const std::filesystem::path& dir = full_directory().path().fs_path();
  for (auto _ : state)
    for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(dir))
      benchmark::DoNotOptimize(entry);
}
// The standard iterator doing what the wrapper's dereference does: read the
// entry's attributes again from the disk.
void Iterate_StdRefreshed(benchmark::State& state) {
  const std::filesystem::path& dir = full_directory().path().fs_path();
  for (auto _ : state)
    for (std::filesystem::directory_entry entry : std::filesystem::directory_iterator(dir)) {
      entry.refresh();
      benchmark::DoNotOptimize(entry);
    }
}
BENCHMARK(Iterate_Qorin);
BENCHMARK(Iterate_Std);
BENCHMARK(Iterate_StdRefreshed);

}  // namespace
