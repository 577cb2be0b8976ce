#include <qorin/debug.h>

#include "debug/log/log_file.h"
#include "debug/log/stream_pipes.h"

#include <cerrno>

namespace qorin::Debug {

namespace {
constexpr char kTypeLetters[] = {'s', 'e', 'l'};
}

OutputHandler::~OutputHandler() = default;

void ByteOutputHandler::logMsg(MessageType type, const char* line, const char* message) {
  logLine(type, line ? std::string_view(line) : std::string_view(), message ? std::string_view(message) : std::string_view());
  flushLines();
}

OutputHandlerFile::OutputHandlerFile(const std::string& filename) { reopen(filename.c_str()); }

OutputHandlerFile::~OutputHandlerFile() {
  std::lock_guard<std::mutex> lock(mutex_);
  closeInternal();
}

bool OutputHandlerFile::valid() {
  std::lock_guard<std::mutex> lock(mutex_);
  return fd_ >= 0;
}

bool OutputHandlerFile::reopen(const char* name) {
  std::lock_guard<std::mutex> lock(mutex_);
  closeInternal();
  filename_ = name ? name : "";
  fd_ = detail::openLogFile(filename_);
  openError_ = fd_ < 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
  writeError_.clear();
  return fd_ >= 0;
}

std::string OutputHandlerFile::getFilename() {
  std::lock_guard<std::mutex> lock(mutex_);
  return filename_;
}

std::error_code OutputHandlerFile::openError() {
  std::lock_guard<std::mutex> lock(mutex_);
  return openError_;
}

std::error_code OutputHandlerFile::writeError() {
  std::lock_guard<std::mutex> lock(mutex_);
  return writeError_;
}

bool OutputHandlerFile::close() {
  std::lock_guard<std::mutex> lock(mutex_);
  closeInternal();
  return true;
}

void OutputHandlerFile::closeInternal() {
  if (fd_ >= 0) detail::closeLogFile(fd_);
  fd_ = -1;
  pending_.clear();
}

void OutputHandlerFile::noteWriteFailure(int errorNumber) {
  if (writeError_) return;
  writeError_ = std::error_code(errorNumber, std::generic_category());
  detail::writeDiagnostic(formatString("Can't write log file: \"%s\": %s\n", filename_.c_str(),
                                       writeError_.message().c_str()));
}

void OutputHandlerFile::logLine(MessageType type, std::string_view line, std::string_view) {
  if (line.empty()) return;
  const bool bare = qorinCoreLogFileNoTypePrefixFlag().isSet();
  std::lock_guard<std::mutex> lock(mutex_);
  if (fd_ < 0) return;
  if (!bare) {
    pending_ += kTypeLetters[type >= STD_MSG && type <= LOG_MSG ? type : LOG_MSG];
    pending_ += ':';
  }
  pending_ += line;
}

void OutputHandlerFile::flushLines() {
  std::lock_guard<std::mutex> lock(mutex_);
  // One append for all that waits: lines of other processes sharing the file
  // never land inside it.
  if (fd_ >= 0 && !pending_.empty() && !detail::appendToLogFile(fd_, pending_.data(), pending_.size())) {
    noteWriteFailure(errno);
  }
  pending_.clear();
}

}  // namespace qorin::Debug
