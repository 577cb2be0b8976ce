#include "debug/errors/exception_text.h"
#include "debug/errors/reporter_lists.h"

#include <atomic>
#include <cstdio>

namespace qorin {
namespace {

std::atomic<bool> defaultReporterActive{false};
std::atomic<bool> testingActive{false};

void printCurrentException(const char* format, const std::string& before, const std::string& after) {
  const std::string text = errorMessages(detail::currentExceptionText(), before, after);
  if (!testingActive) std::fprintf(stderr, format, text.c_str());
}

}  // namespace

void detail::ensureDefaultReporter() {
  static printfException defaultReporter;
  defaultReporterActive = true;
}

printfException::printfException() { setGlobalReporter(true); }

printfException::~printfException() { uninstall(); }

void printfException::reportException(const std::string& before, const std::string& after) {
  printCurrentException("Error: %s\n\n", before, after);
}

void printfException::exceptionAsWarning(const std::string& before, const std::string& after) {
  printCurrentException("Warning: %s\n\n", before, after);
}

bool printfException::is_default_printf_reporter_active() { return defaultReporterActive; }

void reporter_set_testing_active() { testingActive = true; }

}  // namespace qorin
