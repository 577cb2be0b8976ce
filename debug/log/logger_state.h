// The logger's process-wide state, shared by its operations and its stream
// thread. Created on first use and never destroyed: the exit hook and a
// stream thread may still use it while static objects are torn down.
#pragma once

#include <qorin/debug.h>

#include "debug/log/line_assembler.h"
#include "debug/log/old_streams_handler.h"
#include "debug/log/stream_pipes.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace qorin::Debug::detail {

struct LoggerState {
  std::mutex sLoggerAPIMutex;
  std::mutex sPauseMutex;
  std::condition_variable sPauseCheck;
  std::mutex sSyncMutex;
  std::condition_variable sSyncCheck;
  std::atomic<bool> sDoPause{true};
  bool readerParked = false;  // under sPauseMutex: the stream thread waits for unpause
  std::atomic<bool> sShuttingDown{false};
  std::atomic<bool> sSync{false};
  // Sync requests are numbered; the stream thread answers every request
  // numbered up to what it read before its last look at empty pipes.
  std::atomic<unsigned long long> syncRequested{0};
  unsigned long long syncAnswered = 0;  // under sSyncMutex
  std::atomic<bool> threadRunning{false};
  // Set by a dying thread, answered by the stream thread once the pipes are
  // empty (StreamPipes::announceDrained).
  std::atomic<bool> drainBeforeDeath{false};

  // Below: set up under sLoggerAPIMutex; the stream thread uses them only
  // between its start and its join.
  std::unique_ptr<StreamPipes> pipes;
  std::thread streamThread;
  std::shared_ptr<OutputHandlerOldStreams> mirror;
  bool exitHookInstalled = false;
  // The process that intercepts: a child made by fork shares the state but
  // not the stream thread, and must leave the pipes to its parent.
  unsigned long interceptingProcess = 0;
  std::thread::id streamThreadId;
  bool initialized = false;
  std::mutex instanceMutex;
  bool started = false;  // under instanceMutex

  // The stream reader's own: one line per stream, so lines never mix.
  LineAssembler lines[2] = {LineAssembler(MAX_LINE_LENGTH), LineAssembler(MAX_LINE_LENGTH)};
  std::vector<char> readBuffer = std::vector<char>(64 * 1024);
};

LoggerState& loggerState();

}  // namespace qorin::Debug::detail
