// POSIX only: sigaction for the fatal signals.
#include "debug/log/fatal_handlers.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace qorin::Debug::detail {

namespace {

constexpr int kFatalSignals[] = {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV};
constexpr int kSignalCount = sizeof kFatalSignals / sizeof kFatalSignals[0];

void (*drainHook)() = nullptr;
struct sigaction previousActions[kSignalCount];

void onFatalSignal(int signal, siginfo_t* info, void* context) {
  const int savedErrno = errno;
  drainHook();
  int index = 0;
  while (index < kSignalCount && kFatalSignals[index] != signal) ++index;
  if (index == kSignalCount) return;
  const struct sigaction& previous = previousActions[index];
  ::sigaction(signal, &previous, nullptr);
  errno = savedErrno;
  if ((previous.sa_flags & SA_SIGINFO) && previous.sa_sigaction) {
    previous.sa_sigaction(signal, info, context);
  } else if (previous.sa_handler != SIG_DFL && previous.sa_handler != SIG_IGN) {
    previous.sa_handler(signal);
  } else {
    // Blocked while this handler runs: delivered, now with the old action,
    // as soon as it returns, for a fault and for kill() alike.
    ::raise(signal);
  }
}


}  // namespace

void installFatalSignalHandlers(void (*drain)()) {
  if (drainHook) return;
  drainHook = drain;
  struct sigaction action {};
  action.sa_sigaction = &onFatalSignal;
  action.sa_flags = SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  for (int i = 0; i < kSignalCount; ++i) ::sigaction(kFatalSignals[i], &action, &previousActions[i]);
}

unsigned long currentProcessId() { return static_cast<unsigned long>(::getpid()); }

}  // namespace qorin::Debug::detail
