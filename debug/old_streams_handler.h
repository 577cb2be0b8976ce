// OutputHandlerOldStreams: mirrors intercepted lines, undecorated, to the
// standard streams that were in place before interception, so the user
// still sees the program's output.
//
// Example (active, streams intercepted):
//   handler.logMsg(STD_MSG, "12:00: x\n", "x\n");   // old stdout gets "x\n"
//   handler.logMsg(LOG_MSG, "y\n", "y\n");          // nothing unless ALSOMIRRORLOGS
#pragma once

#include <qorin/debug.h>

#include "debug/stream_pipes.h"

#include <mutex>

namespace qorin::Debug::detail {

class OutputHandlerOldStreams : public OutputHandler {
 public:
  explicit OutputHandlerOldStreams(StreamPipes& pipes) : pipes_(pipes) {}

  // Inactive, it writes nothing; deactivated before the saved streams close.
  void setActive(bool active);
  void logMsg(MessageType type, const char* line, const char* message) override;

 private:
  std::mutex mutex_;
  StreamPipes& pipes_;
  bool active_ = false;
};

}  // namespace qorin::Debug::detail
