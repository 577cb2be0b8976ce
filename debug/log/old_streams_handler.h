// OutputHandlerOldStreams: shows intercepted output, undecorated, on the
// standard streams that were in place before interception, so the user
// still sees the program's output. The stream reader hands it the bytes as
// they are read (writeRaw), so the screen gets them at once and exactly,
// carriage returns and unfinished lines included; as a multiplexer output it
// shows the program's own messages.
//
// Example (active, streams intercepted):
//   handler.writeRaw(STD_MSG, "50%\r", 4);           // old stdout gets "50%\r"
//   handler.logMsg(STD_MSG, "12:00: x\n", "x\n");   // old stdout gets "x\n"
//   handler.logMsg(LOG_MSG, "y\n", "y\n");          // nothing unless ALSOMIRRORLOGS
#pragma once

#include <qorin/debug.h>

#include "debug/log/stream_pipes.h"

#include <mutex>

namespace qorin::Debug::detail {

class OutputHandlerOldStreams : public ByteOutputHandler {
 public:
  explicit OutputHandlerOldStreams(StreamPipes& pipes) : pipes_(pipes) {}

  // Inactive, it writes nothing; deactivated before the saved streams close.
  void setActive(bool active);
  void writeRaw(MessageType type, const char* data, std::size_t size);
  void logLine(MessageType type, std::string_view line, std::string_view message) override;

 private:
  std::mutex mutex_;
  StreamPipes& pipes_;
  bool active_ = false;
};

}  // namespace qorin::Debug::detail
