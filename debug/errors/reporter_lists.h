// Where installed reporters live. Three locks in the diagnostics subsystem
// never nest: the global reporter mutex, the thread reporter mutex (every
// ThreadReporterStorage and every reporter's list of storages) and the
// handler mutex (handlers.cpp).
#pragma once

#include <qorin/debug.h>

#include <mutex>
#include <vector>

namespace qorin {

// The reporters installed for one thread, created on the thread's first use
// and destroyed when it ends. Guarded by detail::threadReporterMutex().
class ThreadReporterStorage {
 public:
  ThreadReporterStorage() = default;
  ThreadReporterStorage(const ThreadReporterStorage&) = delete;
  ThreadReporterStorage& operator=(const ThreadReporterStorage&) = delete;
  // Tells each reporter still installed that this thread is gone.
  ~ThreadReporterStorage();

  // In installation order; the last one is active.
  std::vector<ExceptionReporterBase*> reporters;
};

namespace detail {

std::mutex& threadReporterMutex();
ThreadReporterStorage& currentThreadReporterStorage();

struct GlobalReporters {
  std::mutex mutex;
  std::vector<ExceptionReporterBase*> installed;  // the last one is active
};
GlobalReporters& globalReporters();

// Creates the process's default printfException on first need (it installs
// itself globally) and marks it as having been needed.
void ensureDefaultReporter();

}  // namespace detail
}  // namespace qorin
