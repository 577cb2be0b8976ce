// Started by run_installation_case.cmake from a temporary installation: prints
// what the command line and installation queries answer, one "name=value"
// line each, so the script can compare them byte for byte.
//   probe ARGS...            the UTF-8 arguments, the executable, the
//                            installation (or its error) and what a child
//                            process sees of VANTREL_DIR
//   probe ... --force        the same with the installation forced to the
//                            executable's location
//   probe --print-vantrel-dir  (the child) prints VANTREL_DIR
#include <qorin/env.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

int main(int argc, char** argv) {
  qorin::fix_command_line_utf8(&argc, &argv);
  if (argc == 2 && std::string(argv[1]) == "--print-vantrel-dir") {
    std::printf("child VANTREL_DIR=%s\n", qorin::getEnvKstring("VANTREL_DIR").c_str());
    return 0;
  }
  for (int i = 0; i < argc; ++i) std::printf("argv[%d]=%s\n", i, argv[i]);
  qorin::CommandLine* command_line = qorin::CommandLine::get_command_line();
  if (std::string(argv[argc - 1]) == "--force") command_line->force_vantrel_dir_to_exe_location(true);
  std::printf("exe directory=%s\n", qorin::get_exe_directory().string().c_str());
  try {
    std::printf("installation=%s\n", qorin::get_installation_directory().string().c_str());
    std::printf("bin=%s\n", qorin::get_bin_directory().string().c_str());
  } catch (const std::exception& e) {
    std::printf("error=%s\n", e.what());
  }
  std::printf("original VANTREL_DIR=%s\n", command_line->get_original_vantrel_dir_env_value().c_str());
  std::fflush(stdout);
  const std::string child = "\"" + qorin::get_exe_full_path().string() + "\" --print-vantrel-dir";
  return std::system(child.c_str()) == 0 ? 0 : 1;
}
