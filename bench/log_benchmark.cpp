// Logging: one time-stamped line per write into a file, beside a baseline
// that formats the stamp with localtime_r + strftime and writes each line,
// and beside spdlog's file sink flushed after every line; then the
// interception of the process's own standard output into a log file beside
// `tee` on the same data, and the delay from a write to its delivery,
// measured in child processes, since the logger intercepts a process once.
#include <qorin/debug.h>

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <thread>
#include <vector>

namespace {

using namespace qorin::Debug;

constexpr char kMessage[] = "solver step 42 converged, residual 1.25e-09 after 17 iterations\n";

std::string benchFile(const char* tag) { return std::string("/tmp/qorin-bench-") + tag + "-" + std::to_string(getpid()) + ".log"; }

void BM_LogFileMultiplexer(benchmark::State& state) {
  static Multiplexer* mux = nullptr;
  const std::string name = benchFile("mux");
  if (state.thread_index() == 0) {
    mux = new Multiplexer();
    mux->addFileOutput(name);
    mux->enableTimestamps(true);
  }
  for (auto _ : state) mux->logLogMsg(kMessage);
  if (state.thread_index() == 0) {
    delete mux;
    std::remove(name.c_str());
  }
}
BENCHMARK(BM_LogFileMultiplexer)->Threads(1)->Threads(2)->UseRealTime();

void BM_LogFileStrftimeBaseline(benchmark::State& state) {
  static int fd = -1;
  const std::string name = benchFile("base");
  if (state.thread_index() == 0) fd = ::open(name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  char line[512];
  for (auto _ : state) {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    const std::time_t seconds = std::chrono::duration_cast<std::chrono::seconds>(since).count();
    const long micros = static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(since).count() % 1000000);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%F %H:%M:%S", &local);
    const int length = std::snprintf(line, sizeof line, "l:%19s.%06ld: %s", stamp, micros, kMessage);
    benchmark::DoNotOptimize(::write(fd, line, static_cast<std::size_t>(length)));
  }
  if (state.thread_index() == 0) {
    ::close(fd);
    std::remove(name.c_str());
  }
}
BENCHMARK(BM_LogFileStrftimeBaseline)->Threads(1)->Threads(2)->UseRealTime();

void BM_LogFileSpdlogFlushed(benchmark::State& state) {
  static std::shared_ptr<spdlog::logger> logger;
  const std::string name = benchFile("spdlog");
  if (state.thread_index() == 0) {
    logger = std::make_shared<spdlog::logger>("bench", std::make_shared<spdlog::sinks::basic_file_sink_mt>(name));
    logger->set_pattern("l:%Y-%m-%d %H:%M:%S.%f: %v");
    logger->flush_on(spdlog::level::trace);
  }
  for (auto _ : state) logger->info("solver step 42 converged, residual 1.25e-09 after 17 iterations");
  if (state.thread_index() == 0) {
    logger.reset();
    std::remove(name.c_str());
  }
}
BENCHMARK(BM_LogFileSpdlogFlushed)->Threads(1)->Threads(2)->UseRealTime();

// Runs `measure` in a child process whose streams the logger intercepts and
// returns the numbers it reports.
// With `mirror`, what it intercepts is also shown on its old standard
// output, /dev/null.
template <typename Measure>
std::vector<double> inInterceptedChild(Measure measure, bool mirror = false) {
  int report[2];
  if (::pipe(report) != 0) return {};
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(report[0]);
    if (mirror) ::dup2(::open("/dev/null", O_WRONLY), 1);
    Logger::redirectStandardOutputs(true, mirror);
    Logger::start();
    const std::vector<double> values = measure();
    Logger::shutdown();
    [[maybe_unused]] const ssize_t written = ::write(report[1], values.data(), values.size() * sizeof(double));
    ::_exit(0);
  }
  ::close(report[1]);
  std::vector<double> values(64);
  const ssize_t got = ::read(report[0], values.data(), values.size() * sizeof(double));
  ::close(report[0]);
  ::waitpid(child, nullptr, 0);
  values.resize(got > 0 ? static_cast<std::size_t>(got) / sizeof(double) : 0);
  return values;
}

struct CountingOutput : OutputHandler {
  void logMsg(MessageType, const char*, const char*) override {
    lines.fetch_add(1, std::memory_order_release);
    deliveredAt.store(std::chrono::steady_clock::now().time_since_epoch().count(), std::memory_order_release);
  }
  std::atomic<long> lines{0};
  std::atomic<long long> deliveredAt{0};
};

// The data a program writes: 80-byte lines, either 64 KiB of them per write
// (range 0) or one per write (range 1).
constexpr std::size_t kProgramBytes = 64u << 20;
constexpr std::size_t kLineBytes = 80;

std::string programBlock(bool oneLinePerWrite) {
  std::string block;
  const std::size_t size = oneLinePerWrite ? kLineBytes : 64 * 1024 / kLineBytes * kLineBytes;
  while (block.size() < size) block += std::string(kLineBytes - 1, 'x') + "\n";
  return block;
}

void writeProgramOutput(int fd, const std::string& block) {
  for (std::size_t sent = 0; sent < kProgramBytes; sent += block.size()) {
    if (::write(fd, block.data(), block.size()) < 0) return;
  }
}

// The program's own standard output intercepted into a log file and shown
// on the old standard output (/dev/null here, as tee's below), until the
// last line is in the file.
void BM_InterceptionIntoLogFile(benchmark::State& state) {
  const bool oneLinePerWrite = state.range(0) == 1;
  const std::string name = benchFile("intercept");
  for (auto _ : state) {
    const std::vector<double> seconds = inInterceptedChild([&] {
      Logger::getInstance().multiplexer().addFileOutput(name);
      const std::string block = programBlock(oneLinePerWrite);
      const auto start = std::chrono::steady_clock::now();
      writeProgramOutput(1, block);
      Logger::waitForStreamSync();
      return std::vector<double>{std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()};
    }, true);
    std::remove(name.c_str());
    state.SetIterationTime(seconds.empty() ? 1 : seconds[0]);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kProgramBytes));
}
BENCHMARK(BM_InterceptionIntoLogFile)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

// The same data through `program | tee FILE > /dev/null`, until tee ends.
void BM_TeeIntoLogFile(benchmark::State& state) {
  const bool oneLinePerWrite = state.range(0) == 1;
  const std::string name = benchFile("tee");
  const std::string block = programBlock(oneLinePerWrite);
  for (auto _ : state) {
    int input[2];
    if (::pipe(input) != 0) break;
    const pid_t tee = ::fork();
    if (tee == 0) {
      ::dup2(input[0], 0);
      ::close(input[0]);
      ::close(input[1]);
      const int null = ::open("/dev/null", O_WRONLY);
      ::dup2(null, 1);
      ::execlp("tee", "tee", name.c_str(), static_cast<char*>(nullptr));
      ::_exit(127);
    }
    ::close(input[0]);
    const auto start = std::chrono::steady_clock::now();
    writeProgramOutput(input[1], block);
    ::close(input[1]);
    ::waitpid(tee, nullptr, 0);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    std::remove(name.c_str());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kProgramBytes));
}
BENCHMARK(BM_TeeIntoLogFile)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

// One line at a time on an idle logger: the time from its write to its
// delivery, median and 99th percentile in microseconds.
void BM_InterceptionLatency(benchmark::State& state) {
  std::vector<double> result;
  for (auto _ : state) {
    result = inInterceptedChild([] {
      auto output = std::make_shared<CountingOutput>();
      Logger::getInstance().multiplexer().addOutput(output);
      std::vector<double> delays;
      for (long i = 1; i <= 1000; ++i) {
        const auto written = std::chrono::steady_clock::now().time_since_epoch().count();
        if (::write(1, "latency probe\n", 14) < 0) break;
        while (output->lines.load(std::memory_order_acquire) < i) std::this_thread::yield();
        delays.push_back(static_cast<double>(output->deliveredAt.load() - written) / 1000.0);
        ::usleep(200);  // idle again
      }
      std::sort(delays.begin(), delays.end());
      return std::vector<double>{delays[delays.size() / 2], delays[delays.size() * 99 / 100]};
    });
  }
  if (result.size() == 2) {
    state.counters["median_us"] = result[0];
    state.counters["p99_us"] = result[1];
  }
}
BENCHMARK(BM_InterceptionLatency)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
