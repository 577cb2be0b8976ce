#include "log_options.h"

#include <qorin/debug.h>

#include <stdexcept>

namespace qorin::tool {

void LogOptions::addTo(CLI::App& app) {
  app.add_option("--log", file, "Append the log to FILE");
  app.add_option("--prefix", prefix, "Put TEXT: before each log line");
  app.add_flag("--timestamps", timestamps, "Start each log line with the local time");
  app.add_flag("--thread-ids", threadIds, "Mark each log line with its thread, T1, T2, ...");
}

std::string LogOptions::apply() const {
  using Debug::Logger;
  try {
    Logger::getInstance().multiplexer().addFileOutput(file);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  Logger::initialize(nullptr, false);
  Logger::setPrefix(prefix);
  Logger::enableTimestamps(timestamps);
  if (threadIds) Logger::enableThreadIDs(true);
  return "";
}

}  // namespace qorin::tool
