#include "debug/old_streams_handler.h"

#include <cstring>

namespace qorin::Debug::detail {

void OutputHandlerOldStreams::setActive(bool active) {
  std::lock_guard<std::mutex> lock(mutex_);
  active_ = active;
}

void OutputHandlerOldStreams::logMsg(MessageType type, const char* line, const char* message) {
  if (type == LOG_MSG && !qorinCoreLogAlsoMirrorLogsFlag().isSet()) return;
  std::lock_guard<std::mutex> lock(mutex_);
  if (!active_) return;
  const char* text = message ? message : line;
  if (!text || !*text) return;
  // Standard output falls back to the old standard error and the other way
  // round, so a program started without one still shows its lines.
  StandardStream target = type == STD_MSG ? kStandardOutput : kStandardError;
  if (!pipes_.savedValid(target)) target = target == kStandardOutput ? kStandardError : kStandardOutput;
  pipes_.writeSaved(target, text, std::strlen(text));
}

}  // namespace qorin::Debug::detail
