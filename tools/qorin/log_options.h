// The options that `qorin run` and `qorin log` share: where the log goes
// and how its lines are decorated.
#pragma once

#include <qorin/debug.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace qorin::tool {

struct LogOptions {
  std::string file;
  std::string prefix;
  bool timestamps = false;
  bool threadIds = false;

  // Adds --log FILE, --prefix TEXT, --timestamps and --thread-ids.
  void addTo(CLI::App& app);
  // Sets the decoration of the logger's multiplexer and opens the log: the
  // --log file, else the one the debug flag LOGFILE names, else none
  // (`log` stays null). Returns "" or the reason it could not be opened:
  // `cannot open log file "no/dir/x": No such file or directory`.
  std::string open(std::shared_ptr<Debug::OutputHandlerFile>& log) const;
};

// "" while the log file is open and every write went through; else the
// tool's message: `cannot open log file "NAME": REASON` or
// `cannot write log file "NAME": REASON`.
std::string logFileFailure(Debug::OutputHandlerFile& log);

}  // namespace qorin::tool
