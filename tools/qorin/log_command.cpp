// qorin log: log lines from a script, decorated like the program's own.
#include "command.h"
#include "log_options.h"

#include <qorin/debug.h>

#include <cstdio>
#include <memory>

namespace qorin::tool {

namespace {

struct LogCommandOptions {
  LogOptions log;
  std::string text;
};

int logText(const LogCommandOptions& options) {
  std::shared_ptr<Debug::OutputHandlerFile> log;
  if (const std::string error = options.log.open(log); !error.empty()) return usage_error(error);
  std::string text = options.text;
  if (text.empty() || text.back() != '\n') text += '\n';
  if (!log) {
    // With nowhere to log to, the text goes to standard error as it is.
    std::fwrite(text.data(), 1, text.size(), stderr);
    return kExitOk;
  }
  // Each line decorated, all of them in one append.
  Debug::StreamLineLogger(Debug::Logger::getInstance().multiplexer(), Debug::LOG_MSG).log(text);
  if (const std::string failure = logFileFailure(*log); !failure.empty()) return usage_error(failure);
  return kExitOk;
}

CommandRegistration command{"log", "Write log lines (l:) to the log file", [](CLI::App& app) -> CommandRun {
                              auto options = std::make_shared<LogCommandOptions>();
                              options->log.addTo(app);
                              app.add_option("TEXT", options->text, "The text; each of its lines becomes a log line")
                                  ->required();
                              app.footer("Exit status: 0; 2 when the log cannot be opened or written.");
                              return [options] { return logText(*options); };
                            }};

}  // namespace

}  // namespace qorin::tool
