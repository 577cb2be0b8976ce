// qorin run: runs a program with the tool's standard streams intercepted,
// so that everything the program and its children print is logged,
// decorated, and still shown on the screen.
#include "child_process.h"
#include "command.h"
#include "log_options.h"

#include <qorin/debug.h>

#include <memory>

namespace qorin::tool {

namespace {

// The shell's status for a command that could not be run.
constexpr int kExitCannotStart = 127;

struct RunOptions {
  LogOptions log;
  bool doublePipe = false;
  std::vector<std::string> program;
};

int run(const RunOptions& options) {
  using Debug::Logger;
  if (const std::string error = options.log.apply(); !error.empty()) return usage_error(error);
  if (options.doublePipe) Debug::qorinCoreLogStreamDoublePipeFlag().setNumericValue(1);
  Logger::redirectStandardOutputs(true, true);
  Logger::start();
  std::string error;
  int status = runChildProcess(options.program, error);
  if (status < 0) {
    Logger::errMsgArgs("qorin: cannot start \"%s\": %s\n", options.program[0].c_str(), error.c_str());
    status = kExitCannotStart;
  }
  Logger::waitForStreamSync();
  Logger::shutdown();
  return status;
}

CommandRegistration command{
    "run", "Run a program, logging its standard output and standard error", [](CLI::App& app) -> CommandRun {
      auto options = std::make_shared<RunOptions>();
      options->log.addTo(app);
      app.add_flag("--double-pipe", options->doublePipe, "Log standard error lines as errors (e:), not as output");
      app.add_option("PROGRAM", options->program, "The program and its arguments, after --")->required();
      app.footer("Exit status: the program's; 127 when it cannot be started; 2 when the log cannot be opened.");
      return [options] { return run(*options); };
    }};

}  // namespace

}  // namespace qorin::tool
