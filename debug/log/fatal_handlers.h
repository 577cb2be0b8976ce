// The last chance to log what a dying process wrote: hooks that run when
// the process is about to die of a fatal signal (POSIX: SIGABRT, SIGBUS,
// SIGFPE, SIGILL, SIGSEGV), of an exception nobody handles (Windows) or of
// abort() (both); std::terminate is the logger's own. One implementation per
// platform: posix_fatal_handlers.cpp, win32_fatal_handlers.cpp.
//
// Example:
//   installFatalSignalHandlers(&drainBeforeDeath);   // once; later calls do nothing
//   *(volatile int*)nullptr = 0;               // drainBeforeDeath runs, then the
//                                              // handler that was there before
#pragma once

namespace qorin::Debug::detail {

// `drain` runs in a signal handler: it may only read, write and wait on
// descriptors. Afterwards the handlers that were installed before run (or
// the system's default), so the process dies as it would have.
void installFatalSignalHandlers(void (*drain)());

// The calling process's identifier: a child made by fork has its own.
unsigned long currentProcessId();

}  // namespace qorin::Debug::detail
