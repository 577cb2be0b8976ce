#include <qorin/debug.h>

#include "debug/log_file.h"

namespace qorin::Debug {

namespace {
constexpr char kTypeLetters[] = {'s', 'e', 'l'};
}

OutputHandler::~OutputHandler() = default;

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
  return fd_ >= 0;
}

std::string OutputHandlerFile::getFilename() {
  std::lock_guard<std::mutex> lock(mutex_);
  return filename_;
}

bool OutputHandlerFile::close() {
  std::lock_guard<std::mutex> lock(mutex_);
  closeInternal();
  return true;
}

void OutputHandlerFile::closeInternal() {
  if (fd_ >= 0) detail::closeLogFile(fd_);
  fd_ = -1;
}

void OutputHandlerFile::logMsg(MessageType type, const char* line, const char*) {
  if (!line || !*line) return;
  const bool bare = qorinCoreLogFileNoTypePrefixFlag().isSet();
  std::lock_guard<std::mutex> lock(mutex_);
  if (fd_ < 0) return;
  if (bare) {
    detail::writeLogFile(fd_, line, std::char_traits<char>::length(line));
    return;
  }
  // One write for letter and line: two would let another process's line in
  // between.
  buffer_.clear();
  buffer_ += kTypeLetters[type >= STD_MSG && type <= LOG_MSG ? type : LOG_MSG];
  buffer_ += ':';
  buffer_ += line;
  detail::writeLogFile(fd_, buffer_.data(), buffer_.size());
}

}  // namespace qorin::Debug
