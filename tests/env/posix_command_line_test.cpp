#include <qorin/env.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// POSIX takes the arguments as given, bytes included; only argument 0 is
// replaced by the executable's path.
TEST(CommandLine, PosixArgumentsAreTheBytesGiven) {
  const char* given[] = {"prog", "Gr\xc3\xbc\xc3\x9f" "e", "\xff not UTF-8", nullptr};
  qorin::CommandLineBase line;
  line.initialize_args(3, given);
  std::vector<std::string> saved;
  line.save_command_line_utf8(saved);
  EXPECT_EQ(saved, (std::vector<std::string>{line.get_exe_full_path().string(), given[1], given[2]}));
}

}  // namespace
