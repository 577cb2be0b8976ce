#include <qorin/env.h>

#include <filesystem>
#include <stdexcept>

namespace qorin {

namespace {
constexpr const char* kVantrelDir = "VANTREL_DIR";
}

CommandLine::CommandLine()
    : original_env_value_(getEnvKstring(kVantrelDir)) {
  getenv_from_registry_only(kVantrelDir, &original_reg_value_);
}

CommandLine::~CommandLine() = default;

CommandLine* CommandLine::get_command_line() {
  static CommandLine command_line;
  return &command_line;
}

void CommandLine::perform_app_specific_initialization() { ensure_vantrel_dir_is_set(); }

void CommandLine::ensure_vantrel_dir_is_set() {
  if (!installation_directory_.empty()) return;
  if (!forced_to_exe_location_) {
    const std::string value = getenv_check_registry_kstring(kVantrelDir);
    if (!value.empty()) {
      // Absolute now, so that a later change of the current directory does
      // not move the installation; a file of that name is no installation.
      const Path directory = Path(value).complete_path();
      std::error_code ec;
      const bool is_directory = directory.is_directory(ec);
      if (ec) throw std::filesystem::filesystem_error("exists", directory.fs_path(), ec);
      if (!is_directory) {
        throw std::runtime_error("VANTREL_DIR is set to an invalid directory.  \"" + value +
                                 "\" does not exist.");
      }
      installation_directory_ = directory;
      bin_directory_ = Path(directory) /= Path("bin");
      return;
    }
  }
  const Path& exe_directory = get_exe_directory();
  if (!(exe_directory.filename() == Path("bin"))) {
    throw std::runtime_error("This program (" + get_exe_full_path().string() +
                             ") is not in the correct location.\n\n"
                             "It must be in the bin directory of the product installation.");
  }
  bin_directory_ = exe_directory;
  installation_directory_ = exe_directory.parent_path();
  // Child processes must find the same installation.
  putEnvKstring(kVantrelDir, installation_directory_.string());
}

const Path& CommandLine::get_installation_directory() {
  ensure_vantrel_dir_is_set();
  return installation_directory_;
}

const Path& CommandLine::get_bin_directory() {
  ensure_vantrel_dir_is_set();
  return bin_directory_;
}

void CommandLine::force_vantrel_dir_to_exe_location(bool force) {
  forced_to_exe_location_ = force;
  if (installation_directory_.empty()) return;
  installation_directory_ = Path();
  bin_directory_ = Path();
  ensure_vantrel_dir_is_set();
}

const Path& get_exe_directory() { return CommandLine::get_command_line()->get_exe_directory(); }
const Path& get_exe_full_path() { return CommandLine::get_command_line()->get_exe_full_path(); }
const Path& get_bin_directory() { return CommandLine::get_command_line()->get_bin_directory(); }
const Path& get_installation_directory() {
  return CommandLine::get_command_line()->get_installation_directory();
}

void fix_command_line_utf8(int* argc, char*** argv) {
  CommandLine* command_line = CommandLine::get_command_line();
  command_line->initialize_args_if_not_already_initialized(*argc, *argv);
  *argc = command_line->argc();
  *argv = command_line->argv();
}

}  // namespace qorin
