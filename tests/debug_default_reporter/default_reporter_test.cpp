// The default reporter and the testing flag are process-wide and one-way, so
// this executable holds one story that starts from a process in which no
// reporter was ever installed.
#include <qorin/debug.h>

#include "support/recording_reporter.h"
#include "support/stream_capture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

TEST(DefaultReporter, IsInstalledByTheFirstReportAndSilencedForTesting) {
  EXPECT_FALSE(qorin::printfException::is_default_printf_reporter_active());
  qorin::testing::StreamCapture out(stdout);
  qorin::testing::StreamCapture err(stderr);
  try {
    throw std::runtime_error("disk full");
  } catch (...) {
    qorin::reportException("Saving design", "");
    qorin::exceptionAsWarning("", "after");
  }
  EXPECT_TRUE(qorin::printfException::is_default_printf_reporter_active());
  EXPECT_EQ(err.release(),
            "Error: Saving design\ndisk full\n\n"
            "Warning: disk full\nafter\n\n");
  EXPECT_EQ(out.release(), "");

  // Silenced, reports still go through the chain, in which the default
  // printer is an ordinary global reporter.
  qorin::reporter_set_testing_active();
  qorin::testing::StreamCapture silenced(stderr);
  qorin::reportWarning("quiet");
  {
    qorin::testing::RecordingReporter recorder;
    recorder.setGlobalReporter(true);
    qorin::reportError("recorded");
    EXPECT_EQ(recorder.lines, std::vector<std::string>{"error: recorded"});
  }
  qorin::reportError("quiet");
  EXPECT_EQ(silenced.release(), "");
}

}  // namespace
