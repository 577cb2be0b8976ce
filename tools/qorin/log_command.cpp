// qorin log: one log line from a script, decorated like the program's own.
#include "command.h"
#include "log_options.h"

#include <qorin/debug.h>

#include <memory>

namespace qorin::tool {

namespace {

struct LogCommandOptions {
  LogOptions log;
  std::string text;
};

int logLine(const LogCommandOptions& options) {
  using Debug::Logger;
  if (const std::string error = options.log.apply(); !error.empty()) return usage_error(error);
  // With nowhere to log to, the line goes to standard error as it is.
  if (!Logger::fileOutputInUse()) Logger::getInstance().multiplexer().enable(false);
  Logger::logMsg((options.text + "\n").c_str());
  return kExitOk;
}

CommandRegistration command{"log", "Write one log line (l:) to the log file", [](CLI::App& app) -> CommandRun {
                              auto options = std::make_shared<LogCommandOptions>();
                              options->log.addTo(app);
                              app.add_option("TEXT", options->text, "The line's text")->required();
                              return [options] { return logLine(*options); };
                            }};

}  // namespace

}  // namespace qorin::tool
