#include <qorin/debug.h>

#include "debug/log/line_assembler.h"
#include "debug/log/log_line.h"
#include "debug/log/stream_pipes.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <utility>
#include <vector>

namespace qorin::Debug {

namespace {
constexpr std::size_t kFormatBufferSize = 10000;
constexpr char kFormattingError[] = "<FORMATTING ERROR>\n";

std::string openFailure(const std::string& name, const std::error_code& error) {
  return formatString("Can't open log file: \"%s\": %s", name.c_str(), error.message().c_str());
}
}  // namespace

Multiplexer::Multiplexer() = default;
Multiplexer::~Multiplexer() = default;

void Multiplexer::addOutput(const std::shared_ptr<OutputHandler>& handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  addOutputInternal(handler);
}

void Multiplexer::addOutputInternal(const std::shared_ptr<OutputHandler>& handler) {
  if (!handler) return;
  for (const Output& output : outputs_) {
    if (output.handler == handler) return;
  }
  outputs_.push_back({handler, dynamic_cast<ByteOutputHandler*>(handler.get()), false});
}

void Multiplexer::removeOutput(const std::shared_ptr<OutputHandler>& handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  removeOutputInternal(handler);
}

void Multiplexer::removeOutputInternal(const std::shared_ptr<OutputHandler>& handler) {
  outputs_.erase(std::remove_if(outputs_.begin(), outputs_.end(),
                                [&](const Output& output) { return output.handler == handler; }),
                 outputs_.end());
  if (handler == fileOutput_) fileOutput_.reset();
}

void Multiplexer::removeAllOutputs() {
  std::lock_guard<std::mutex> lock(mutex_);
  outputs_.clear();
  fileOutput_.reset();
}

void Multiplexer::addFileOutput(const std::string& name) {
  if (name.empty()) return;
  // Opened before locking: a slow file system must not stall other loggers.
  auto file = std::make_shared<OutputHandlerFile>(name);
  if (!file->valid()) throw std::runtime_error(openFailure(name, file->openError()));
  std::lock_guard<std::mutex> lock(mutex_);
  removeFileOutputInternal();
  fileOutput_ = file;
  addOutputInternal(file);
}

void Multiplexer::removeFileOutput() {
  std::lock_guard<std::mutex> lock(mutex_);
  removeFileOutputInternal();
}

void Multiplexer::removeFileOutputInternal() {
  if (!fileOutput_) return;
  fileOutput_->close();
  removeOutputInternal(fileOutput_);
}

bool Multiplexer::fileOutputExists() {
  std::lock_guard<std::mutex> lock(mutex_);
  return fileOutput_ != nullptr;
}

bool Multiplexer::anOutputExists() {
  std::lock_guard<std::mutex> lock(mutex_);
  return !outputs_.empty();
}

bool Multiplexer::enable(bool on) {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(enabled_, on);
}

bool Multiplexer::enabled() {
  std::lock_guard<std::mutex> lock(mutex_);
  return enabled_;
}

bool Multiplexer::enableTimestamps(bool on) {
  std::lock_guard<std::mutex> lock(mutex_);
  return timestamps_.exchange(on);
}

bool Multiplexer::enableThreadIDs(bool on) {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(threadIDs_, on);
}

std::string Multiplexer::setPrefix(const std::string& prefix) {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(prefix_, prefix);
}

bool Multiplexer::initialize(const char* fileName) {
  std::lock_guard<std::mutex> lock(mutex_);
  return initializeInternal(fileName);
}

bool Multiplexer::initializeInternal(const char* fileName) {
  if (!enabled_) {
    outputs_.clear();
    fileOutput_.reset();
  }
  if (!fileOutput_) {
    const std::string name =
        fileName && *fileName ? std::string(fileName) : qorinCoreLogFileNameFlag().asString();
    if (!name.empty()) {
      // Tried once: lazy initialisation must not retry the open for every
      // message.
      initialized_ = true;
      auto file = std::make_shared<OutputHandlerFile>(name);
      if (!file->valid()) {
        active_ = false;
        detail::writeDiagnostic(openFailure(name, file->openError()) + "\n");
        return false;
      }
      fileOutput_ = file;
      addOutputInternal(file);
      active_ = true;
    }
  }
  if (qorinCoreLogAddThreadIDFlag().isSet()) threadIDs_ = true;
  initialized_ = true;
  return true;
}

bool Multiplexer::hasBeenInitialized() {
  std::lock_guard<std::mutex> lock(mutex_);
  return initialized_;
}

void Multiplexer::doInitializationIfNecessary() {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!initialized_) initializeInternal(nullptr);
}

bool Multiplexer::activeForMessages() {
  std::lock_guard<std::mutex> lock(mutex_);
  return active_;
}

void Multiplexer::logGenericMsg(MessageType type, const char* message) {
  if (message && activeForMessages()) logMsgInternal(type, message);
}

void Multiplexer::logGenericMsg(MessageType type, std::string_view message) {
  if (activeForMessages()) logMsgInternal(type, message);
}

void Multiplexer::logGenericMsgArgsArgs(MessageType type, const char* format, va_list args) {
  if (activeForMessages()) logMsgArgsInternal(type, format, args);
}

void Multiplexer::logGenericMsgArgs(MessageType type, const char* format, ...) {
  va_list args;
  va_start(args, format);
  logGenericMsgArgsArgs(type, format, args);
  va_end(args);
}

void Multiplexer::stdLogMsg(const char* message) { logGenericMsg(STD_MSG, message); }
void Multiplexer::errLogMsg(const char* message) { logGenericMsg(ERR_MSG, message); }
void Multiplexer::logLogMsg(const char* message) { logGenericMsg(LOG_MSG, message); }

#define QORIN_MULTIPLEXER_ARGS_FORM(function, type) \
  void Multiplexer::function(const char* format, ...) { \
    va_list args;                                       \
    va_start(args, format);                             \
    logGenericMsgArgsArgs(type, format, args);          \
    va_end(args);                                       \
  }
QORIN_MULTIPLEXER_ARGS_FORM(stdLogMsgArgs, STD_MSG)
QORIN_MULTIPLEXER_ARGS_FORM(errLogMsgArgs, ERR_MSG)
QORIN_MULTIPLEXER_ARGS_FORM(logLogMsgArgs, LOG_MSG)
#undef QORIN_MULTIPLEXER_ARGS_FORM

void Multiplexer::logMsgArgsInternal(MessageType type, const char* format, va_list args) {
  if (!format) return;
  va_list again;
  va_copy(again, args);
  char buffer[kFormatBufferSize];
  const int length = std::vsnprintf(buffer, sizeof buffer, format, args);
  if (length < 0) {
    logMsgInternal(type, kFormattingError);
  } else if (static_cast<std::size_t>(length) < kFormatBufferSize) {
    logMsgInternal(type, std::string_view(buffer, static_cast<std::size_t>(length)));
  } else {
    // The limit is the length, not the length plus one: such a message has
    // always lost its last character, and readers of old logs expect that.
    std::vector<char> large(static_cast<std::size_t>(length) + 1, '\0');
    const int again_length = std::vsnprintf(large.data(), static_cast<std::size_t>(length), format, again);
    if (again_length < 0) {
      logMsgInternal(type, kFormattingError);
    } else {
      logMsgInternal(type, std::string_view(large.data(), static_cast<std::size_t>(length) - 1));
    }
  }
  va_end(again);
}

Multiplexer::Stamp Multiplexer::readClock() const {
  Stamp stamp;
  stamp.wanted = timestamps_.load();
  if (stamp.wanted) {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(since);
    stamp.seconds = whole.count();
    stamp.micros = static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(since - whole).count());
  }
  return stamp;
}

void Multiplexer::logMsgInternal(MessageType type, std::string_view message) {
  const Stamp stamp = readClock();
  std::unique_lock<std::mutex> lock(mutex_);
  if (!enabled_) {
    // Written without the lock: the stream may be an intercepted pipe whose
    // reader needs the lock to empty it.
    lock.unlock();
    std::FILE* stream = type == STD_MSG ? stdout : stderr;
    std::fwrite(message.data(), 1, message.size(), stream);
    std::fflush(stream);
    return;
  }
  deliverLineInternal(type, message, stamp);
  flushOutputsInternal();
}

void Multiplexer::deliverLineInternal(MessageType type, std::string_view message, const Stamp& stamp,
                                      const OutputHandler* except) {
  // One buffer for every line: the lock is held, and a log line is written
  // far more often than the multiplexer is created. It also gives the C
  // string handlers their terminating zero.
  std::string& line = lineBuffer_;
  line.clear();
  if (stamp.wanted && (stamp.seconds == stampSeconds_ || detail::formatLocalSeconds(stamp.seconds, stampText_))) {
    stampSeconds_ = stamp.seconds;
    line = stampText_;
    line += '.';
    detail::appendDigits(line, stamp.micros, 6);
    line += ": ";
  }
  if (!prefix_.empty()) {
    line += prefix_;
    line += ": ";
  }
  if (threadIDs_) {
    line += detail::threadIdentifier();
    line += ": ";
  }
  const std::size_t decoration = line.size();
  line += message;
  const std::string_view text(line.data() + decoration, message.size());
  for (Output& output : outputs_) {
    if (output.handler.get() == except) continue;
    try {
      if (!output.handler->valid()) continue;
      if (output.bytes) {
        output.bytes->logLine(type, line, text);
      } else {
        output.handler->logMsg(type, line.c_str(), line.c_str() + decoration);
      }
    } catch (...) {
      reportOutputFailure(output);
    }
  }
}

void Multiplexer::logLines(MessageType type, detail::LineAssembler& lines, std::string_view bytes, bool finish,
                           const OutputHandler* except) {
  const Stamp stamp = readClock();
  std::lock_guard<std::mutex> lock(mutex_);
  const auto deliver = [&](std::string_view line) {
    if (enabled_) deliverLineInternal(type, line, stamp, except);
  };
  if (finish) {
    lines.flush(deliver);
  } else {
    lines.feed(bytes.data(), bytes.size(), deliver);
  }
  if (enabled_) flushOutputsInternal();
}

void Multiplexer::flushOutputsInternal() {
  for (Output& output : outputs_) {
    if (!output.bytes) continue;
    try {
      output.bytes->flushLines();
    } catch (...) {
      reportOutputFailure(output);
    }
  }
}

void Multiplexer::reportOutputFailure(Output& output) {
  if (output.failureReported) return;
  output.failureReported = true;
  std::string reason = "unknown exception";
  try {
    throw;
  } catch (const std::exception& e) {
    reason = e.what();
  } catch (...) {
  }
  detail::writeDiagnostic("Log output failed: " + reason + "\n");
}

}  // namespace qorin::Debug
