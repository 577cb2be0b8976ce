#include <qorin/debug.h>

#include "support/recording_reporter.h"
#include "support/stream_capture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using qorin::testing::RecordingReporter;
using Lines = std::vector<std::string>;

// Keeps a global reporter installed, so no report in this executable falls
// back to the process's default printer.
class Reporters : public ::testing::Test {
 protected:
  Reporters() { global.setGlobalReporter(true); }
  RecordingReporter global;
};

TEST_F(Reporters, NewestThreadReporterThenNewestGlobalOneWins) {
  RecordingReporter older;
  RecordingReporter first;
  RecordingReporter second;
  older.setGlobalReporter(true);
  global.setGlobalReporter(true);  // already installed: moves to the newest place
  first.setThreadReporter(true);
  second.setThreadReporter(true);
  first.setThreadReporter(true);  // already installed for this thread: does not move
  qorin::reportError("1");
  second.setThreadReporter(false);
  qorin::reportWarning("2");
  first.setThreadReporter(false);
  qorin::reportError("3");
  global.setGlobalReporter(false);
  qorin::reportError("4");

  EXPECT_EQ(second.lines, Lines{"error: 1"});
  EXPECT_EQ(first.lines, Lines{"warning: 2"});
  EXPECT_EQ(global.lines, Lines{"error: 3"});
  EXPECT_EQ(older.lines, Lines{"error: 4"});
}

TEST_F(Reporters, APrintfExceptionInstallsItselfButCopiesDoNot) {
  qorin::testing::StreamCapture err(stderr);
  auto printer = std::make_unique<qorin::printfException>();
  qorin::reportWarning("at 100% done");  // the text is an argument, not a format
  const qorin::printfException copy(*printer);
  printer.reset();
  qorin::reportError("recorded");
  EXPECT_EQ(err.release(), "Warning: at 100% done\n\n");
  EXPECT_EQ(global.lines, Lines{"error: recorded"});
}

struct ThrowingReporter : qorin::ExceptionReporterBase {
  void reportException(const std::string&, const std::string&) override { throw std::logic_error(""); }
  void exceptionAsWarning(const std::string&, const std::string&) override { throw std::logic_error(""); }
};

TEST_F(Reporters, ASlotsExceptionPropagatesAndReleasesTheLock) {
  ThrowingReporter throwing;
  throwing.setGlobalReporter(true);
  EXPECT_THROW(qorin::reportError("x"), std::logic_error);
  throwing.setThreadReporter(true);
  EXPECT_THROW(qorin::reportWarning("x"), std::logic_error);
}  // the destructor takes both mutexes again

TEST_F(Reporters, DestroyingAThreadReporterElsewhereUninstallsIt) {
  auto reporter = std::make_unique<RecordingReporter>();
  reporter->setThreadReporter(true);
  std::thread([&] { reporter.reset(); }).join();
  qorin::reportError("after destruction");
  EXPECT_EQ(global.lines, Lines{"error: after destruction"});
}

// The per-thread reporters outlive their threads: destroying them must not
// visit the ended threads' storages (AddressSanitizer watches).
TEST_F(Reporters, ThreadReportersServeOnlyTheirThreadsConcurrently) {
  constexpr int kReports = 200;
  std::vector<RecordingReporter> perThread(4);
  std::vector<std::thread> workers;
  for (RecordingReporter& reporter : perThread) {
    workers.emplace_back([&reporter] {
      reporter.setThreadReporter(true);
      for (int i = 0; i < kReports; ++i) qorin::reportWarning("w");
    });
  }
  for (int i = 0; i < kReports; ++i) {
    RecordingReporter().setGlobalReporter(true);
    qorin::reportError("main");
  }
  for (std::thread& worker : workers) worker.join();
  for (const auto& reporter : perThread) EXPECT_EQ(reporter.lines, Lines(kReports, "warning: w"));
  EXPECT_EQ(global.lines, Lines(kReports, "error: main"));
}

// Reporters come and go while other threads report: no report may reach one
// whose derived part is already gone (a pure virtual call, and a race that
// ThreadSanitizer sees on the recorded lines).
TEST_F(Reporters, InstallAndDestroyWhileOthersReportConcurrently) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> senders;
  for (int i = 0; i < 2; ++i) {
    senders.emplace_back([&stop] {
      while (!stop.load()) qorin::reportWarning("w");
    });
  }
  for (int round = 0; round < 3000; ++round) {
    RecordingReporter passing;
    passing.setGlobalReporter(true);
    if (round % 2) passing.setThreadReporter(true);
    std::this_thread::yield();
  }
  stop = true;
  for (std::thread& sender : senders) sender.join();
  for (const std::string& line : global.lines) EXPECT_EQ(line, "warning: w");
}

}  // namespace
