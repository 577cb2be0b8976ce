// qorin: the library's main jobs from a shell. Commands register themselves
// (command.h); this file only dispatches and maps CLI11's errors to statuses.
#include "checked_output.h"
#include "command.h"
#include "stdio_mode.h"

#include <qorin/debug.h>

#include <qorin/env.h>

#include <exception>
#include <iostream>
#include <map>
#include <string>

namespace qorin::tool {

namespace {
std::vector<Command>& command_list() {
  static std::vector<Command> commands;
  return commands;
}
}  // namespace

const std::vector<Command>& registered_commands() { return command_list(); }

CommandRegistration::CommandRegistration(std::string name, std::string summary, CommandSetup setup) {
  command_list().push_back({std::move(name), std::move(summary), std::move(setup)});
}

namespace {
int report(const std::string& message, int status) {
  std::cerr << "qorin: " << message << "\n";
  return status;
}
}  // namespace

int usage_error(const std::string& message) { return report(message, kExitUsage); }
int invalid_input(const std::string& message) { return report(message, kExitInvalidInput); }

}  // namespace qorin::tool

namespace {

int run(int argc, char** argv) {
  using namespace qorin::tool;
  // Windows hands main() its arguments in the ANSI code page: take them again
  // in UTF-8 so that every command reads non-ASCII text as typed.
  try {
    qorin::fix_command_line_utf8(&argc, &argv);
  } catch (const std::exception& e) {
    return usage_error(std::string("cannot read the command line: ") + e.what());
  }
  // Named here: argv[0] is now the full path, which help texts need not show.
  CLI::App app{"qorin: check and convert parameter values, units and annotations", "qorin"};
  app.footer(
      "Exit status: 0 success; 1 an input was invalid or could not be converted; 2 usage error,\n"
      "or an input that could not be read or output that could not be written.");
  // The tool is built with its library, from the same tree: one version.
  app.set_version_flag("--version", "qorin " QORIN_VERSION " (QorinCore " QORIN_VERSION ", " QORIN_PLATFORM ")",
                       "Print the tool's and the library's version and the platform");
  app.require_subcommand(1);
  std::map<CLI::App*, CommandRun> runs;
  for (const Command& command : registered_commands()) {
    CLI::App* sub = app.add_subcommand(command.name, command.summary);
    runs[sub] = command.setup(*sub);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    app.exit(e);
    return kExitUsage;
  }
  for (auto& [sub, run] : runs) {
    if (sub->parsed()) return run();
  }
  return kExitUsage;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace qorin::tool;
  // Output is the same bytes on every platform: no "\r\n" translation.
  use_binary_stdio();
  int status = kExitIo;
  try {
    status = run(argc, argv);
  } catch (...) {
    // Whatever a command lets escape is reported, never an abort.
    try {
      qorin::reportException("qorin", "");
    } catch (...) {
    }
  }
  return finish_output(status);
}
