// Windows only: the process's unhandled-exception filter, the C runtime's
// SIGABRT handler (abort).
#include "debug/log/fatal_handlers.h"

#include "platform/win32_api.h"

#include <csignal>
#include <cstdlib>

namespace qorin::Debug::detail {

namespace {

void (*drainHook)() = nullptr;
LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr;
void (*previousAbortHandler)(int) = SIG_DFL;

LONG WINAPI onUnhandledException(EXCEPTION_POINTERS* exception) {
  drainHook();
  return previousFilter ? previousFilter(exception) : EXCEPTION_CONTINUE_SEARCH;
}

void onAbort(int signal) {
  drainHook();
  // The runtime has put back the default already; abort() ends the process
  // once this returns.
  if (previousAbortHandler != SIG_DFL && previousAbortHandler != SIG_IGN && previousAbortHandler != SIG_ERR) {
    previousAbortHandler(signal);
  }
}


}  // namespace

void installFatalSignalHandlers(void (*drain)()) {
  if (drainHook) return;
  drainHook = drain;
  previousFilter = ::SetUnhandledExceptionFilter(&onUnhandledException);
  previousAbortHandler = std::signal(SIGABRT, &onAbort);
}

unsigned long currentProcessId() { return ::GetCurrentProcessId(); }

}  // namespace qorin::Debug::detail
