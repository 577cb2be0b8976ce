#include <qorin/debug.h>

#include "debug/log/fatal_handlers.h"
#include "debug/log/logger_state.h"

#include <cstdlib>
#include <exception>

namespace qorin::Debug {

const int MAX_LINE_LENGTH = 10240;
const int STREAM_PIPE_SIZE = 32768;

namespace detail {
LoggerState& loggerState() {
  static LoggerState* state = new LoggerState();
  return *state;
}
}  // namespace detail

namespace {

using detail::loggerState;

// How long a dying process waits for the stream thread to log what is
// still in the pipes: long enough for megabytes, short enough that a stream
// thread stuck behind the dying one (a lock it held) delays death only a
// little.
constexpr int kDrainBeforeDeathMilliseconds = 3000;

bool inInterceptingProcess() { return loggerState().interceptingProcess == detail::currentProcessId(); }

// Output written just before the program ends must reach the log, and the
// program must not hang on a stream thread that never ends. A child made by
// fork that calls exit leaves the pipes to its parent: draining them would
// steal the parent's lines and log its unfinished line twice.
void shutdownAtExit() {
  if (inInterceptingProcess()) Logger::shutdown();
}

// Runs in a signal handler or a terminate handler: only reads, writes and
// waits. The stream thread cannot wait for itself, and a paused one reads
// nothing.
void drainBeforeDeath() {
  detail::LoggerState& state = loggerState();
  detail::StreamPipes* pipes = state.pipes.get();
  if (!pipes || !state.threadRunning || state.sDoPause || !inInterceptingProcess() ||
      std::this_thread::get_id() == state.streamThreadId) {
    return;
  }
  state.drainBeforeDeath = true;
  pipes->wake();
  pipes->awaitDrained(kDrainBeforeDeathMilliseconds);
}

std::terminate_handler previousTerminate = nullptr;

// An uncaught exception: log what waits, then let the handler that was
// there before speak (its message is drained by the SIGABRT that follows).
void drainThenTerminate() {
  drainBeforeDeath();
  if (previousTerminate) previousTerminate();
  std::abort();
}

}  // namespace

Logger::Logger() = default;
Logger::~Logger() = default;

Logger& Logger::getInstance() {
  static Logger* instance = new Logger();
  return *instance;
}

bool Logger::initialize(const char* fileName, bool withStreams) {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  return initializeInternal(fileName, withStreams);
}

bool Logger::initializeInternal(const char* fileName, bool withStreams) {
  detail::LoggerState& state = loggerState();
  if (state.initialized && withStreams) return true;
  if (!getInstance().multiplexer_.initialize(fileName)) return false;
  const Flag& intercept = qorinCoreLogInterceptStreamsFlag();
  // Interception does not start again after shutdown: its reader is gone.
  if (withStreams && intercept.isSet() && state.sShuttingDown) return false;
  if (withStreams && intercept.isSet() && !state.pipes) {
    setupThreadHandlersInternal(intercept.asInteger() != 0, !qorinCoreLogNoMirrorStreamsFlag().isSet());
    if (state.pipes) setPausedInternal(false);
  }
  {
    std::lock_guard<std::mutex> instance(state.instanceMutex);
    state.started = true;
  }
  state.initialized = true;
  return true;
}

bool Logger::isInitialized() {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  return loggerState().initialized;
}

void Logger::redirectStandardOutputs(bool alsoStandardOutput, bool mirror) {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  if (!loggerState().sShuttingDown) setupThreadHandlersInternal(alsoStandardOutput, mirror);
}

void Logger::setupThreadHandlersInternal(bool alsoStandardOutput, bool mirror) {
  detail::LoggerState& state = loggerState();
  if (!state.pipes) setupThread(alsoStandardOutput);
  if (mirror && !state.mirror &&
      (state.pipes->savedValid(detail::kStandardOutput) || state.pipes->savedValid(detail::kStandardError))) {
    state.mirror = std::make_shared<detail::OutputHandlerOldStreams>(*state.pipes);
    state.mirror->setActive(true);
    getInstance().multiplexer_.addOutput(state.mirror);
  }
}

void Logger::setupThread(bool alsoStandardOutput) {
  detail::LoggerState& state = loggerState();
  // Flags that the stream thread and the exit hook read are created now, so
  // that they outlive the exit hook.
  qorinCoreLogStreamDoublePipeFlag();
  qorinCoreLogAlsoMirrorLogsFlag();
  qorinCoreLogFileNoTypePrefixFlag();
  state.pipes = std::make_unique<detail::StreamPipes>(alsoStandardOutput, STREAM_PIPE_SIZE);
  state.interceptingProcess = detail::currentProcessId();
  try {
    state.streamThread = std::thread(&Logger::inStreamThreadHandler);
  } catch (...) {
    state.pipes->restoreStandardStreams();
    state.pipes.reset();
    throw;
  }
  // The thread starts paused and ends only after shutdown, which waits for
  // the API mutex held here: it cannot have ended yet.
  state.streamThreadId = state.streamThread.get_id();
  state.threadRunning = true;
  if (!state.exitHookInstalled) {
    state.exitHookInstalled = true;
    detail::callAtProcessExit(&shutdownAtExit);
    detail::installFatalSignalHandlers(&drainBeforeDeath);
    previousTerminate = std::set_terminate(&drainThenTerminate);
  }
}

void Logger::start() { setPaused(false); }
void Logger::pause() { setPaused(true); }
void Logger::unpause() { setPaused(false); }

void Logger::setPaused(bool paused) {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  setPausedInternal(paused);
}

void Logger::setPausedInternal(bool paused) {
  detail::LoggerState& state = loggerState();
  if (state.pipes) {
    std::unique_lock<std::mutex> pause(state.sPauseMutex);
    const bool wasPaused = state.sDoPause.exchange(paused);
    if (wasPaused && !paused) state.sPauseCheck.notify_all();
    if (!wasPaused && paused && state.threadRunning) {
      // Nothing may be read once pause returns: the reader may be between
      // its look at the flag and a read, so wait until it has parked.
      state.pipes->wake();
      state.sPauseCheck.wait(pause, [&] { return state.readerParked || !state.threadRunning || state.sShuttingDown; });
    }
  }
  if (!paused) {
    std::lock_guard<std::mutex> instance(state.instanceMutex);
    state.started = true;
  }
}

void Logger::waitForUnpaused() {
  detail::LoggerState& state = loggerState();
  std::unique_lock<std::mutex> pause(state.sPauseMutex);
  state.sPauseCheck.wait(pause, [&] { return !state.sDoPause || state.sShuttingDown || !state.threadRunning; });
}

void Logger::waitForStreamSync() {
  if (loggerState().sShuttingDown) return;
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  syncAndFlushThread();
}

void Logger::syncAndFlushThread() {
  detail::LoggerState& state = loggerState();
  if (!state.pipes || state.sDoPause || !state.threadRunning) return;
  std::unique_lock<std::mutex> sync(state.sSyncMutex);
  // Raised before the ticket: a stream thread that sees the ticket also
  // sees the flag, and looks at every pipe.
  state.sSync = true;
  const unsigned long long ticket = ++state.syncRequested;
  state.pipes->wake();
  state.sSyncCheck.wait(sync, [&] { return state.syncAnswered >= ticket || !state.threadRunning; });
}

void Logger::shutdown() {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  shutdownInternal();
}

void Logger::shutdownInternal() {
  detail::LoggerState& state = loggerState();
  if (state.sShuttingDown.exchange(true)) return;
  setPausedInternal(false);
  if (state.pipes) shutdownStreamThread();
}

void Logger::shutdownStreamThread() {
  detail::LoggerState& state = loggerState();
  // The process's own descriptors go back first: the thread then ends once
  // the pipes are empty, even while a child process still holds them.
  state.pipes->restoreStandardStreams();
  state.pipes->wake();
  if (state.streamThread.joinable()) state.streamThread.join();
  // What the stream thread could not read (it stops at a failed pipe) is
  // read here.
  state.pipes->expectData();
  drainStreams(false);
  flushStreamLines();
  if (state.mirror) {
    state.mirror->setActive(false);
    getInstance().multiplexer_.removeOutput(state.mirror);
    state.mirror.reset();
  }
  state.pipes.reset();
}

bool Logger::enableTimestamps(bool on) { return getInstance().multiplexer_.enableTimestamps(on); }
bool Logger::enableThreadIDs(bool on) { return getInstance().multiplexer_.enableThreadIDs(on); }
std::string Logger::setPrefix(const std::string& prefix) { return getInstance().multiplexer_.setPrefix(prefix); }
bool Logger::fileOutputInUse() { return getInstance().multiplexer_.fileOutputExists(); }

bool Logger::threadingAlreadyInitialized() {
  std::lock_guard<std::mutex> lock(loggerState().sLoggerAPIMutex);
  return loggerState().pipes != nullptr;
}

void Logger::stdMsg(const char* message) {
  Multiplexer& mux = getInstance().multiplexer_;
  mux.doInitializationIfNecessary();
  mux.stdLogMsg(message);
}

void Logger::errMsg(const char* message) {
  Multiplexer& mux = getInstance().multiplexer_;
  mux.doInitializationIfNecessary();
  mux.errLogMsg(message);
}

void Logger::logMsg(const char* message) {
  Multiplexer& mux = getInstance().multiplexer_;
  mux.doInitializationIfNecessary();
  mux.logLogMsg(message);
}

#define QORIN_LOGGER_ARGS_FORM(function, type)          \
  void Logger::function(const char* format, ...) {      \
    Multiplexer& mux = getInstance().multiplexer_;      \
    mux.doInitializationIfNecessary();                  \
    va_list args;                                       \
    va_start(args, format);                             \
    mux.logGenericMsgArgsArgs(type, format, args);      \
    va_end(args);                                       \
  }
QORIN_LOGGER_ARGS_FORM(stdMsgArgs, STD_MSG)
QORIN_LOGGER_ARGS_FORM(errMsgArgs, ERR_MSG)
QORIN_LOGGER_ARGS_FORM(logMsgArgs, LOG_MSG)
#undef QORIN_LOGGER_ARGS_FORM

}  // namespace qorin::Debug
