// qorin env: what a program of the suite sees of its process environment:
// the product identity, its executable and installation, the heap, and its
// debug flags. The flag report goes
// to standard error, exactly as the library writes it for any program.
#include "command.h"

#include <qorin/debug.h>
#include <qorin/env.h>

#include <exception>
#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

CommandRegistration env_command{
    "env", "Show the product, the heap and the debug flags (_QDX_DEBUG_FLAGS, on standard error)",
    [](CLI::App& app) -> CommandRun {
      auto flags = std::make_shared<std::string>();
      CLI::Option* flags_option =
          app.add_option("--flags", *flags, "Read this text instead of the process's _QDX_DEBUG_FLAGS");
      return [flags, flags_option] {
        if (flags_option->count() > 0) putEnvKstring("_QDX_DEBUG_FLAGS", *flags);
        std::cout << get_product_name() << " " << get_product_version() << "\n";
        try {
          std::cout << "Executable: " << get_exe_full_path().string() << "\n";
          std::cout << "Installation: " << get_installation_directory().string() << "\n";
        } catch (const std::exception& e) {
          std::cout << "none (" << e.what() << ")\n";
        }
        std::cout << get_heap_info_string() << std::endl;
        Debug::Flag::reinitializeFlags(false);
        Debug::Flag::debugDump();
        Debug::Flag::reinitializeFlags(true);
        return kExitOk;
      };
    }};

}  // namespace

}  // namespace qorin::tool
