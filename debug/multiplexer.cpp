#include <qorin/debug.h>

#include "debug/log_line.h"

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
}  // namespace

Multiplexer::Multiplexer() = default;
Multiplexer::~Multiplexer() = default;

void Multiplexer::addOutput(const std::shared_ptr<OutputHandler>& handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  addOutputInternal(handler);
}

void Multiplexer::addOutputInternal(const std::shared_ptr<OutputHandler>& handler) {
  if (handler && std::find(outputs_.begin(), outputs_.end(), handler) == outputs_.end()) outputs_.push_back(handler);
}

void Multiplexer::removeOutput(const std::shared_ptr<OutputHandler>& handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  removeOutputInternal(handler);
}

void Multiplexer::removeOutputInternal(const std::shared_ptr<OutputHandler>& handler) {
  outputs_.erase(std::remove(outputs_.begin(), outputs_.end(), handler), outputs_.end());
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
  if (!file->valid()) throw std::runtime_error(formatString("Can't open log file: \"%s\"", name.c_str()));
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
      auto file = std::make_shared<OutputHandlerFile>(name);
      if (!file->valid()) {
        // A log that cannot be written is dropped rather than stopping the
        // program that wanted it.
        active_ = false;
        return true;
      }
      fileOutput_ = file;
      addOutputInternal(file);
    }
  }
  threadIDs_ = qorinCoreLogAddThreadIDFlag().isSet();
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
    logMsgInternal(type, buffer);
  } else {
    // The limit is the length, not the length plus one: such a message has
    // always lost its last character, and readers of old logs expect that.
    std::vector<char> large(static_cast<std::size_t>(length) + 1, '\0');
    const int again_length = std::vsnprintf(large.data(), static_cast<std::size_t>(length), format, again);
    logMsgInternal(type, again_length < 0 ? kFormattingError : large.data());
  }
  va_end(again);
}

void Multiplexer::logMsgInternal(MessageType type, const char* message, bool onlyWhenEnabled) {
  if (!message) return;
  long long seconds = 0;
  unsigned micros = 0;
  const bool wantStamp = timestamps_.load();
  if (wantStamp) {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(since);
    seconds = whole.count();
    micros = static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(since - whole).count());
  }
  std::lock_guard<std::mutex> lock(mutex_);
  if (onlyWhenEnabled && !enabled_) return;
  // One buffer for every line: the lock is held, and a log line is written
  // far more often than the multiplexer is created.
  std::string& line = lineBuffer_;
  line.clear();
  if (wantStamp && (seconds == stampSeconds_ || detail::formatLocalSeconds(seconds, stampText_))) {
    stampSeconds_ = seconds;
    line = stampText_;
    line += '.';
    detail::appendDigits(line, micros, 6);
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
  const bool decorated = !line.empty();
  if (decorated) line += message;
  if (!enabled_) {
    std::FILE* stream = type == STD_MSG ? stdout : stderr;
    std::fputs(message, stream);
    std::fflush(stream);
    return;
  }
  const char* text = decorated ? line.c_str() : message;
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    const std::shared_ptr<OutputHandler> handler = outputs_[i];
    if (handler->valid()) handler->logMsg(type, text, message);
  }
}

}  // namespace qorin::Debug
