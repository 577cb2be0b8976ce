// Logging: one time-stamped line per write into a file, beside a baseline
// that formats the stamp with localtime_r + strftime and writes each line,
// and beside spdlog's file sink flushed after every line; then the
// interception of the process's own standard output (throughput, and the
// delay from a write to its delivery), measured in child processes, since
// the logger intercepts a process once.
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
template <typename Measure>
std::vector<double> inInterceptedChild(Measure measure) {
  int report[2];
  if (::pipe(report) != 0) return {};
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(report[0]);
    Logger::redirectStandardOutputs(true, false);
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

// 100-byte lines written 64 KiB at a time to standard output, until the
// handler has them all.
void BM_InterceptionThroughput(benchmark::State& state) {
  constexpr std::size_t kBytes = 256u << 20;
  for (auto _ : state) {
    const std::vector<double> seconds = inInterceptedChild([] {
      auto output = std::make_shared<CountingOutput>();
      Logger::getInstance().multiplexer().addOutput(output);
      std::string block;
      while (block.size() + 100 <= 64 * 1024) block += std::string(99, 'x') + "\n";
      const auto start = std::chrono::steady_clock::now();
      for (std::size_t sent = 0; sent < kBytes; sent += block.size()) {
        if (::write(1, block.data(), block.size()) < 0) break;
      }
      Logger::waitForStreamSync();
      return std::vector<double>{std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()};
    });
    state.SetIterationTime(seconds.empty() ? 1 : seconds[0]);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}
BENCHMARK(BM_InterceptionThroughput)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

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
