#include "debug/log/old_streams_handler.h"

namespace qorin::Debug::detail {

void OutputHandlerOldStreams::setActive(bool active) {
  std::lock_guard<std::mutex> lock(mutex_);
  active_ = active;
}

void OutputHandlerOldStreams::writeRaw(MessageType type, const char* data, std::size_t size) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!active_ || size == 0) return;
  // Standard output falls back to the old standard error and the other way
  // round, so a program started without one still shows its lines.
  StandardStream target = type == STD_MSG ? kStandardOutput : kStandardError;
  if (!pipes_.savedValid(target)) target = target == kStandardOutput ? kStandardError : kStandardOutput;
  pipes_.writeSaved(target, data, size);
}

void OutputHandlerOldStreams::logLine(MessageType type, std::string_view line, std::string_view message) {
  if (type == LOG_MSG && !qorinCoreLogAlsoMirrorLogsFlag().isSet()) return;
  const std::string_view text = message.empty() ? line : message;
  writeRaw(type, text.data(), text.size());
}

}  // namespace qorin::Debug::detail
