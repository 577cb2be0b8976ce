// The options that `qorin run` and `qorin log` share: where the log goes
// and how its lines are decorated.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace qorin::tool {

struct LogOptions {
  std::string file;
  std::string prefix;
  bool timestamps = false;
  bool threadIds = false;

  // Adds --log FILE, --prefix TEXT, --timestamps and --thread-ids.
  void addTo(CLI::App& app);
  // Sets the logger up: opens the file (without --log, the one named by the
  // debug flag LOGFILE, if any) and the decoration. Returns "" or the
  // error text ("Can't open log file: \"x\"").
  std::string apply() const;
};

}  // namespace qorin::tool
