// qorin run: runs a program as if it ran alone (the same screen, signals and
// exit status) while everything it and its children print goes, decorated,
// to the log.
#include "child_process.h"
#include "command.h"
#include "log_options.h"

#include <qorin/debug.h>

#include <cstdio>
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

// The bytes as they came, at once: a prompt without a line feed shows, a
// carriage return redraws. False when the screen is gone (a closed pipe):
// the program then meets the broken pipe it would meet alone.
bool show(std::FILE* screen, std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), screen) == bytes.size() && std::fflush(screen) == 0) return true;
  // Not the tool's own output error: the program's status tells the story.
  std::clearerr(screen);
  return false;
}

// What a program writes, to the screen and to the log: each chunk's
// complete lines reach the log file with one append.
class Relay {
 public:
  explicit Relay(std::shared_ptr<Debug::OutputHandlerFile> log) : log_(std::move(log)) {}

  bool take(ChildStream stream, std::string_view bytes) {
    const bool shown = show(stream == ChildStream::output ? stdout : stderr, bytes);
    if (log_) linesOf(stream).log(bytes);
    return shown;
  }

  // Logs the unfinished last lines and `note` (an error line, or ""); then
  // "" or why the log is incomplete.
  std::string finish(const std::string& note) {
    if (!log_) return "";
    error_.finish();
    output_.finish();
    if (!note.empty()) multiplexer().logGenericMsg(Debug::ERR_MSG, note);
    return logFileFailure(*log_);
  }

 private:
  static Debug::Multiplexer& multiplexer() { return Debug::Logger::getInstance().multiplexer(); }
  Debug::StreamLineLogger& linesOf(ChildStream stream) { return stream == ChildStream::output ? output_ : error_; }

  std::shared_ptr<Debug::OutputHandlerFile> log_;
  Debug::StreamLineLogger output_{multiplexer(), Debug::STD_MSG};
  Debug::StreamLineLogger error_{multiplexer(), Debug::ERR_MSG};
};

int run(const RunOptions& options) {
  std::shared_ptr<Debug::OutputHandlerFile> log;
  if (const std::string error = options.log.open(log); !error.empty()) return usage_error(error);
  Relay relay(log);
  const ChildResult result = runChildProcess(
      options.program, [&](ChildStream stream, std::string_view bytes) { return relay.take(stream, bytes); });
  std::string note;
  if (!result.started) {
    note = "qorin: cannot start \"" + options.program[0] + "\": " + result.error + "\n";
    show(stderr, note);
  }
  if (const std::string failure = relay.finish(note); !failure.empty()) return usage_error(failure);
  return result.started ? result.status : kExitCannotStart;
}

CommandRegistration command{
    "run", "Run a program, logging its standard output and standard error", [](CLI::App& app) -> CommandRun {
      auto options = std::make_shared<RunOptions>();
      options->log.addTo(app);
      // Standard error is always logged as errors now; the flag stays for
      // the scripts that name it.
      app.add_flag("--double-pipe", options->doublePipe)->group("");
      app.add_option("PROGRAM", options->program, "The program and its arguments; options end at the program")
          ->required();
      // Everything from the program's name on is the program's, its options
      // included; "/c" too, which Windows would otherwise take for an option.
      app.positionals_at_end();
      app.allow_windows_style_options(false);
      app.footer(
          "The program's standard output and standard error reach qorin's own, byte for byte as they\n"
          "come; the log gets each line decorated, s: for output, e: for errors. Like `program | tee`,\n"
          "qorin reads until every writer of the program's output has closed it (background children\n"
          "included), then exits. SIGINT, SIGTERM, SIGHUP and SIGQUIT sent to qorin go to the program;\n"
          "on Windows Ctrl-C and Ctrl-Break reach it through the console, and qorin waits for it.\n"
          "Exit status: the program's (128 + the signal number when a signal ended it; on Windows the\n"
          "whole exit code, exception codes included); 127 when it cannot be started; 2 when the log\n"
          "cannot be opened or written.");
      return [options] { return run(*options); };
    }};

}  // namespace

}  // namespace qorin::tool
