#include <qorin/env.h>

#include "env/command_line_os.h"

#include <cstdio>
#include <stdexcept>

namespace qorin {

CommandLineBase::CommandLineBase() = default;
CommandLineBase::~CommandLineBase() = default;

void CommandLineBase::perform_app_specific_initialization() {}

void CommandLineBase::report_error(const std::string& message) {
  std::fputs(("Error setting up command line: " + message).c_str(), stderr);
}

void CommandLineBase::initialize_args(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  if (detail::os_command_line_arguments(&arguments)) {
    set_args(std::move(arguments));
  } else {
    copy_args(argc, argv);
  }
  try {
    initialize_path_to_executable();
    fix_argv0();
  } catch (...) {
    report_error(getExceptionMessage("", ""));
  }
}

void CommandLineBase::initialize_args_if_not_already_initialized(int argc, const char* const* argv) {
  if (argv_.size() < 2) initialize_args(argc, argv);
}

void CommandLineBase::copy_args(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  for (int i = 0; argv != nullptr && i < argc && argv[i] != nullptr; ++i) arguments.emplace_back(argv[i]);
  set_args(std::move(arguments));
}

void CommandLineBase::set_args(std::vector<std::string> arguments) {
  // A caller may still hold the previous vector and its strings: keep both.
  if (!argv_.empty()) retired_.push_back(std::move(argv_));
  argv_.clear();
  for (std::string& argument : arguments) {
    argv_.push_back(saved_.emplace_back(std::move(argument)).data());
  }
  argv_.push_back(nullptr);
}

void CommandLineBase::fix_argv0() {
  if (argv_.size() < 2) return;  // no argument 0 to replace
  argv_[0] = saved_.emplace_back(exe_full_path_.string()).data();
}

void CommandLineBase::check_initialized() const {
  if (argv_.size() < 2) throw std::runtime_error("Internal error: Command line was not initialized.");
}

int CommandLineBase::argc() const {
  check_initialized();
  return static_cast<int>(argv_.size()) - 1;
}

char** CommandLineBase::argv() const {
  check_initialized();
  return const_cast<char**>(argv_.data());
}

void CommandLineBase::check_index(int index) const {
  // Argument 0 is the program: it can never be taken.
  if (index < 1) throw std::runtime_error("Internal error: Invalid argument index");
  if (index >= static_cast<int>(argv_.size()) - 1) throw std::runtime_error("Argument not specified");
}

std::string CommandLineBase::take_arg(int index) {
  check_index(index);
  std::string argument = argv_[static_cast<size_t>(index)];
  remove_arg(index);
  return argument;
}

void CommandLineBase::remove_arg(int index) {
  check_index(index);
  argv_.erase(argv_.begin() + index);
}

void CommandLineBase::save_command_line_utf8(std::vector<std::string>& arguments) const {
  arguments.assign(argv_.begin(), argv_.end() - (argv_.empty() ? 0 : 1));
}

void CommandLineBase::initialize_path_to_executable() {
  if (!exe_full_path_.empty()) return;
  try {
    Path full_path(detail::os_executable_file_name());
    if (full_path.is_relative()) full_path = Path::current_path().resolve_path(full_path);
    full_path.normalize();
    exe_directory_ = full_path.parent_path();
    exe_full_path_ = std::move(full_path);
  } catch (...) {
    throw std::runtime_error(getExceptionMessage("Could not find executable location.", ""));
  }
}

const Path& CommandLineBase::get_exe_full_path() {
  initialize_path_to_executable();
  return exe_full_path_;
}

const Path& CommandLineBase::get_exe_directory() {
  initialize_path_to_executable();
  return exe_directory_;
}

}  // namespace qorin
