#include <qorin/debug.h>

#include "support/recording_reporter.h"
#include "support/stream_capture.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using qorin::testing::RecordingReporter;
using Lines = std::vector<std::string>;

// Every test keeps a global reporter installed, so no report in this
// executable falls back to the process's default printer.

TEST(Reporters, NewestGlobalWinsAndDestroyingRestoresThePrevious) {
  RecordingReporter a;
  a.setGlobalReporter(true);
  auto b = std::make_unique<RecordingReporter>();
  b->setGlobalReporter(true);
  qorin::reportError("1");
  b.reset();
  qorin::reportError("2");

  RecordingReporter c;
  c.setGlobalReporter(true);
  a.setGlobalReporter(true);  // moves a back to the newest place
  qorin::reportWarning("3");
  a.setGlobalReporter(false);
  qorin::reportError("4");
  c.setGlobalReporter(false);

  EXPECT_EQ(a.lines(), (Lines{"error: 2", "warning: 3"}));
  EXPECT_EQ(c.lines(), Lines{"error: 4"});
}

TEST(Reporters, ThreadReporterBeatsGlobalAndReinstallingDoesNotMoveIt) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  RecordingReporter first;
  RecordingReporter second;
  first.setThreadReporter(true);
  second.setThreadReporter(true);
  first.setThreadReporter(true);  // already installed for this thread: stays behind second
  qorin::reportError("1");
  second.setThreadReporter(false);
  qorin::reportError("2");
  first.setThreadReporter(false);
  qorin::reportError("3");

  EXPECT_EQ(second.lines(), Lines{"error: 1"});
  EXPECT_EQ(first.lines(), Lines{"error: 2"});
  EXPECT_EQ(global.lines(), Lines{"error: 3"});
}

TEST(Reporters, APrintfExceptionInstallsItselfButCopiesDoNot) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  qorin::testing::StreamCapture err(stderr);
  auto printer = std::make_unique<qorin::printfException>();
  printer->setThreadReporter(true);
  qorin::reportWarning("printed");
  const qorin::printfException copy(*printer);
  printer.reset();
  qorin::reportError("recorded");
  EXPECT_EQ(err.release(), "Warning: printed\n\n");
  EXPECT_EQ(global.lines(), Lines{"error: recorded"});
}

struct ThrowingReporter : qorin::ExceptionReporterBase {
  void reportException(const std::string&, const std::string&) override { throw std::logic_error(""); }
  void exceptionAsWarning(const std::string&, const std::string&) override { throw std::logic_error(""); }
};

TEST(Reporters, ASlotsExceptionPropagatesAndReleasesTheLock) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  {
    ThrowingReporter throwing;
    throwing.setGlobalReporter(true);
    EXPECT_THROW(qorin::reportError("x"), std::logic_error);
    throwing.setThreadReporter(true);
    EXPECT_THROW(qorin::reportWarning("x"), std::logic_error);
  }  // the destructor takes both mutexes again
  qorin::reportError("after");
  EXPECT_EQ(global.lines(), Lines{"error: after"});
}

TEST(Reporters, AThreadReporterStaysInItsThread) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  RecordingReporter workerOnly;
  std::promise<void> installed;
  std::promise<void> mainReported;
  std::thread worker([&] {
    workerOnly.setThreadReporter(true);
    installed.set_value();
    mainReported.get_future().wait();
    qorin::reportError("from worker");
  });
  installed.get_future().wait();
  qorin::reportError("from main");
  std::thread([] { qorin::reportError("from bystander"); }).join();
  mainReported.set_value();
  worker.join();

  EXPECT_EQ(global.lines(), (Lines{"error: from main", "error: from bystander"}));
  EXPECT_EQ(workerOnly.lines(), Lines{"error: from worker"});
}

TEST(Reporters, AReporterOutlivesTheThreadsThatUsedIt) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  auto reporter = std::make_unique<RecordingReporter>();
  for (int i = 0; i < 3; ++i) {
    std::thread([&] {
      reporter->setThreadReporter(true);
      qorin::reportError("worker");
    }).join();
  }
  EXPECT_EQ(reporter->lines(), Lines(3, "error: worker"));
  // The ended threads' storages are gone; destroying the reporter must not
  // visit them (AddressSanitizer watches this).
  reporter.reset();
}

TEST(Reporters, DestroyingAReporterUninstallsItFromLiveThreads) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  auto reporter = std::make_unique<RecordingReporter>();
  std::promise<void> installed;
  std::promise<void> destroyed;
  std::thread worker([&] {
    reporter->setThreadReporter(true);
    installed.set_value();
    destroyed.get_future().wait();
    qorin::reportError("after destruction");
  });
  installed.get_future().wait();
  reporter.reset();
  destroyed.set_value();
  worker.join();
  EXPECT_EQ(global.lines(), Lines{"error: after destruction"});
}

TEST(Reporters, ThreadsReportConcurrentlyWhileGlobalsChange) {
  RecordingReporter global;
  global.setGlobalReporter(true);
  constexpr int kThreads = 4;
  constexpr int kReports = 200;
  std::vector<RecordingReporter> perThread(kThreads);
  std::vector<std::thread> workers;
  for (RecordingReporter& reporter : perThread) {
    workers.emplace_back([&reporter] {
      reporter.setThreadReporter(true);
      for (int i = 0; i < kReports; ++i) qorin::reportWarning("w");
    });
  }
  for (int i = 0; i < kReports; ++i) RecordingReporter().setGlobalReporter(true);
  for (std::thread& worker : workers) worker.join();
  for (const auto& reporter : perThread) EXPECT_EQ(reporter.lines(), Lines(kReports, "warning: w"));
  EXPECT_EQ(global.lines(), Lines{});
}

}  // namespace
