// The default reporter and the testing flag are process-wide and one-way, so
// this executable holds one story that starts from a process in which no
// reporter was ever installed.
#include <qorin/debug.h>

#include "support/recording_reporter.h"
#include "support/stream_capture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using qorin::testing::StreamCapture;

// Counts how often the report text of an exception is asked for.
class CountingHandler : public qorin::ExceptionHandlerBase {
 public:
  void handleRethrow(const std::string&) override {}
  std::string describeCurrentException() override {
    ++described;
    return "";
  }
  int described = 0;
};

TEST(DefaultReporter, IsInstalledByTheFirstReportAndSilencedForTesting) {
  EXPECT_FALSE(qorin::printfException::is_default_printf_reporter_active());

  StreamCapture out(stdout);
  StreamCapture err(stderr);
  try {
    throw std::runtime_error("disk full");
  } catch (...) {
    qorin::reportException("Saving design", "");
    qorin::exceptionAsWarning("", "after");
  }
  EXPECT_TRUE(qorin::printfException::is_default_printf_reporter_active());
  try {
    throw 42;
  } catch (...) {
    qorin::reportException("", "");
    qorin::reportException("B", "A");
  }
  qorin::reportWarning("w");
  EXPECT_EQ(err.release(),
            "Error: Saving design\ndisk full\n\n"
            "Warning: disk full\nafter\n\n"
            "Error: Unknown exception encountered.\n\n"
            "Error: B\nUnknown exception encountered.\nA\n\n"
            "Warning: w\n\n");
  EXPECT_EQ(out.release(), "");

  // The default printer is an ordinary global reporter from now on.
  {
    qorin::testing::RecordingReporter recorder;
    recorder.setGlobalReporter(true);
    qorin::reportError("recorded");
    EXPECT_EQ(recorder.lines(), std::vector<std::string>{"error: recorded"});
  }

  // Silenced, reports still reach the default printer, which still asks for
  // the exception's text.
  qorin::reporter_set_testing_active();
  CountingHandler handler;
  StreamCapture silenced(stderr);
  qorin::reportError("quiet");
  qorin::reportWarning("quiet");
  EXPECT_EQ(silenced.release(), "");
  EXPECT_EQ(handler.described, 2);
  EXPECT_TRUE(qorin::printfException::is_default_printf_reporter_active());
}

}  // namespace
