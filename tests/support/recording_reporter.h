// A reporter that records what it is asked to report, one line per report:
// "error: <text>" or "warning: <text>", the text as getExceptionMessage
// gives it. Installs nothing by itself. Its slots run under the lock of the
// reporter list it was found in, so it needs no lock of its own as long as
// it is installed either globally or for threads, not both at once.
//
// Example:
//   RecordingReporter reporter;
//   reporter.setGlobalReporter(true);
//   qorin::reportError("x");   // reporter.lines == {"error: x"}
#pragma once

#include <qorin/debug.h>

#include <string>
#include <vector>

namespace qorin::testing {

struct RecordingReporter : ExceptionReporterBase {
  RecordingReporter() = default;
  RecordingReporter(const RecordingReporter&) = default;
  ~RecordingReporter() override { uninstall(); }
  void reportException(const std::string& before, const std::string& after) override {
    lines.push_back("error: " + getExceptionMessage(before, after));
  }
  void exceptionAsWarning(const std::string& before, const std::string& after) override {
    lines.push_back("warning: " + getExceptionMessage(before, after));
  }

  std::vector<std::string> lines;
};

}  // namespace qorin::testing
