#include "log_options.h"

namespace qorin::tool {

void LogOptions::addTo(CLI::App& app) {
  app.add_option("--log", file, "Append the log to FILE")->type_name("FILE");
  app.add_option("--prefix", prefix, "Put TEXT: before each log line");
  app.add_flag("--timestamps", timestamps, "Start each log line with the local time");
  app.add_flag("--thread-ids", threadIds, "Mark each log line with its thread, T1, T2, ...");
}

std::string LogOptions::open(std::shared_ptr<Debug::OutputHandlerFile>& log) const {
  using namespace Debug;
  Multiplexer& multiplexer = Logger::getInstance().multiplexer();
  multiplexer.setPrefix(prefix);
  multiplexer.enableTimestamps(timestamps);
  multiplexer.enableThreadIDs(threadIds || qorinCoreLogAddThreadIDFlag().isSet());
  const std::string name = file.empty() ? qorinCoreLogFileNameFlag().asString() : file;
  if (name.empty()) return "";
  log = std::make_shared<OutputHandlerFile>(name);
  if (std::string failure = logFileFailure(*log); !failure.empty()) {
    log.reset();
    return failure;
  }
  multiplexer.addOutput(log);
  return "";
}

std::string logFileFailure(Debug::OutputHandlerFile& log) {
  const std::error_code opening = log.openError();
  const std::error_code writing = log.writeError();
  if (!opening && !writing) return "";
  return std::string(opening ? "cannot open" : "cannot write") + " log file \"" + log.getFilename() +
         "\": " + (opening ? opening : writing).message();
}

}  // namespace qorin::tool
