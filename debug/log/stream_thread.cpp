// The stream thread: reads the interception pipes in chunks of what waits,
// turns the bytes into lines and hands them to the logger's multiplexer.
// Between bursts it sleeps in the pipes' wait until data or a request (sync,
// pause, shutdown) arrives.
#include <qorin/debug.h>

#include "debug/log/logger_state.h"

namespace qorin::Debug {

namespace {

using detail::loggerState;
using detail::StandardStream;

// Answers every sync request numbered up to `seen`, a number read before
// the pipes were last found empty: whatever was written before such a
// request has been delivered.
void answerSyncRequests(unsigned long long seen) {
  detail::LoggerState& state = loggerState();
  std::lock_guard<std::mutex> sync(state.sSyncMutex);
  if (seen > state.syncAnswered) state.syncAnswered = seen;
  state.sSync = state.syncAnswered < state.syncRequested;
  state.sSyncCheck.notify_all();
}

// Standard error counts as standard output unless asked otherwise: the two
// used to share one pipe.
MessageType lineType(StandardStream stream) {
  return stream == detail::kStandardError && qorinCoreLogStreamDoublePipeFlag().isSet() ? ERR_MSG : STD_MSG;
}

}  // namespace

Logger::Drain Logger::drainStreams(bool untilPaused) {
  detail::LoggerState& state = loggerState();
  for (;;) {
    if (untilPaused && state.sDoPause && !state.sShuttingDown) return Drain::paused;
    // Standard error first, as a terminal shows an error before the output
    // that follows it.
    bool gotSome = false;
    for (StandardStream stream : {detail::kStandardError, detail::kStandardOutput}) {
      const long got = state.pipes->readWaiting(stream, state.readBuffer.data(), state.readBuffer.size());
      if (got < 0) return Drain::failed;
      if (got == 0) continue;
      deliverChunk(stream, state.readBuffer.data(), static_cast<std::size_t>(got));
      gotSome = true;
      break;
    }
    if (!gotSome) return Drain::empty;
  }
}

void Logger::deliverChunk(int streamIndex, const char* data, std::size_t size) {
  const auto stream = static_cast<StandardStream>(streamIndex);
  detail::LoggerState& state = loggerState();
  const MessageType type = lineType(stream);
  // The screen gets the bytes as they come, whole or not, and even while
  // the multiplexer is disabled; the mirror then skips these lines.
  if (state.mirror) state.mirror->writeRaw(type, data, size);
  getInstance().multiplexer_.logLines(type, state.lines[stream], std::string_view(data, size), false,
                                      state.mirror.get());
}

void Logger::flushStreamLines() {
  detail::LoggerState& state = loggerState();
  for (StandardStream stream : {detail::kStandardError, detail::kStandardOutput}) {
    getInstance().multiplexer_.logLines(lineType(stream), state.lines[stream], {}, true, state.mirror.get());
  }
}

void Logger::inStreamThreadHandler() {
  detail::LoggerState& state = loggerState();
  for (;;) {
    {
      std::unique_lock<std::mutex> pause(state.sPauseMutex);
      state.readerParked = true;
      state.sPauseCheck.notify_all();
      state.sPauseCheck.wait(pause, [&] { return !state.sDoPause || state.sShuttingDown; });
      state.readerParked = false;
    }
    const unsigned long long seen = state.syncRequested.load();
    // Whoever waits needs every byte written before the request, including
    // bytes that came after the last look at the pipes.
    if (state.sSync || state.drainBeforeDeath || state.sShuttingDown) state.pipes->expectData();
    const Drain drained = drainStreams(true);
    if (drained == Drain::failed) break;
    if (drained == Drain::paused) continue;
    if (seen > 0) answerSyncRequests(seen);
    if (state.drainBeforeDeath.exchange(false)) {
      flushStreamLines();
      state.pipes->announceDrained();
    }
    if (state.sShuttingDown) break;
    state.pipes->waitForData();
  }
  flushStreamLines();
  {
    std::lock_guard<std::mutex> sync(state.sSyncMutex);
    state.threadRunning = false;
    state.sSync = false;
    state.sSyncCheck.notify_all();
  }
  std::lock_guard<std::mutex> pause(state.sPauseMutex);
  state.sPauseCheck.notify_all();
}

}  // namespace qorin::Debug
