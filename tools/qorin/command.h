// The qorin tool's commands: each *_command.cpp defines one static
// CommandRegistration, so adding a command touches no other file.
//
// Example:
//   static CommandRegistration number{"number", "Check and convert number texts",
//       [](CLI::App& app) -> CommandRun {
//         auto texts = std::make_shared<std::vector<std::string>>();
//         app.add_option("TEXT", *texts)->required();
//         return [texts] { ...print...; return kExitOk; };
//       }};
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace qorin::tool {

// Exit statuses shared by every command (listed in `qorin --help`).
constexpr int kExitOk = 0;
constexpr int kExitInvalidInput = 1;  // an input was checked and found invalid
constexpr int kExitUsage = 2;         // bad arguments: unknown option, command or name
constexpr int kExitIo = 2;            // an input could not be read or the output written

using CommandRun = std::function<int()>;
// Adds the command's options to its sub-command and returns what runs it.
using CommandSetup = std::function<CommandRun(CLI::App&)>;

struct Command {
  std::string name;
  std::string summary;
  CommandSetup setup;
};

const std::vector<Command>& registered_commands();

struct CommandRegistration {
  CommandRegistration(std::string name, std::string summary, CommandSetup setup);
};

// A usage error found after parsing (an unknown unit, type or name): the
// message goes to standard error with the "qorin: " prefix; returns kExitUsage.
int usage_error(const std::string& message);
// An input that was read and found invalid: the same message form; returns
// kExitInvalidInput.
int invalid_input(const std::string& message);

}  // namespace qorin::tool
