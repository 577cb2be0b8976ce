#include "debug/errors/reporter_lists.h"

#include <stdexcept>

namespace qorin {
namespace {

using ReporterSlot = void (ExceptionReporterBase::*)(const std::string&, const std::string&);

// The calling thread's newest reporter, else the newest global one, else the
// default printer. Each list's mutex is held while its reporter runs, and
// never both at once.
void reportThroughActive(ReporterSlot slot, const std::string& before, const std::string& after) {
  ThreadReporterStorage& storage = detail::currentThreadReporterStorage();
  {
    std::lock_guard<std::mutex> lock(detail::threadReporterMutex());
    if (!storage.reporters.empty()) {
      (storage.reporters.back()->*slot)(before, after);
      return;
    }
  }
  detail::GlobalReporters& global = detail::globalReporters();
  for (int attempt = 0; attempt < 2; ++attempt) {
    {
      std::lock_guard<std::mutex> lock(global.mutex);
      if (!global.installed.empty()) {
        (global.installed.back()->*slot)(before, after);
        return;
      }
    }
    detail::ensureDefaultReporter();
  }
  // Only after the default reporter has been destroyed at exit.
  throw;
}

}  // namespace

void reportException(const std::string& before, const std::string& after) {
  reportThroughActive(&ExceptionReporterBase::reportException, before, after);
}

void exceptionAsWarning(const std::string& before, const std::string& after) {
  reportThroughActive(&ExceptionReporterBase::exceptionAsWarning, before, after);
}

void reportError(const std::string& message) {
  try {
    throw std::runtime_error(message);
  } catch (const std::runtime_error&) {
    reportException("", "");
  }
}

void reportWarning(const std::string& message) {
  try {
    throw std::runtime_error(message);
  } catch (const std::runtime_error&) {
    exceptionAsWarning("", "");
  }
}

}  // namespace qorin
