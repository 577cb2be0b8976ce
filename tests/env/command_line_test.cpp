#include <qorin/env.h>

#include "support/scoped_environment.h"
#include "support/stream_capture.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using qorin::testing::thrown_message;

TEST(CommandLine, RefusesEveryQueryBeforeInitialization) {
  qorin::CommandLineBase line;
  const std::string not_initialized = "Internal error: Command line was not initialized.";
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.argc(); }), not_initialized);
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.argv(); }), not_initialized);
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.take_arg(1); }), "Argument not specified");
}

// On Windows the vector comes from the process's own command line, which
// holds the test program and whatever gtest was given; on POSIX from the
// argv passed here. Either way argument 0 becomes the executable's full path.
TEST(CommandLine, ArgumentZeroIsTheExecutableAndTakingShiftsTheRest) {
  const char* given[] = {"not-the-program", "one", "two", nullptr};
  qorin::CommandLineBase line;
  line.initialize_args(3, given);
  EXPECT_EQ(std::string(line.argv()[0]), line.get_exe_full_path().string());
  EXPECT_FALSE(line.get_exe_full_path().is_relative());
  EXPECT_TRUE(line.get_exe_directory() == line.get_exe_full_path().parent_path());

  // Whatever the platform's source, the vector has a null pointer after its
  // last argument, and taking moves the later ones down.
  std::vector<std::string> before;
  line.save_command_line_utf8(before);
  ASSERT_EQ(static_cast<int>(before.size()), line.argc());
  EXPECT_EQ(line.argv()[line.argc()], nullptr);
  if (line.argc() >= 3) {
    EXPECT_EQ(line.take_arg(1), before[1]);
    EXPECT_EQ(std::string(line.argv()[1]), before[2]);
    EXPECT_EQ(line.argc(), static_cast<int>(before.size()) - 1);
    EXPECT_EQ(line.argv()[line.argc()], nullptr);
  }

  const int argc = line.argc();
  const std::string bad_index = "Internal error: Invalid argument index";
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.remove_arg(0); }), bad_index);
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.take_arg(-1); }), bad_index);
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.take_arg(argc); }), "Argument not specified");
  EXPECT_EQ(line.argc(), argc);

  // The "if not already" form changes nothing now; a full second
  // initialisation builds a new vector, and the old one stays readable for
  // a caller that still holds it (main's argv after fix_command_line_utf8).
  char** held = line.argv();
  const std::string held_zero = held[0];
  const char* fewer[] = {"x", nullptr};
  line.initialize_args_if_not_already_initialized(1, fewer);
  EXPECT_EQ(line.argc(), argc);
  line.initialize_args(1, fewer);
  EXPECT_EQ(std::string(held[0]), held_zero);
}

// VANTREL_DIR must name a directory; a relative one is taken from where the
// process was when it was first read.
TEST(CommandLine, VantrelDirIsADirectoryMadeAbsolute) {
  using qorin::Path;
  qorin::TemporaryDirectory scratch("qorin-vantrel");
  const Path installation = Path(scratch.path()) /= Path("prod"), file = Path(scratch.path()) /= Path("file");
  ASSERT_TRUE(installation.create_directory());
  std::fclose(file.fopen("w"));
  qorin::DirectorySaver saved;
  ASSERT_EQ(qorin::chdir_utf8(scratch.path()), 0);
  {
    qorin::testing::ScopedEnvironmentVariable vantrel_dir("VANTREL_DIR", "prod/.");
    qorin::CommandLine line;
    EXPECT_EQ(line.get_installation_directory(), installation);
    ASSERT_EQ(qorin::chdir_utf8(installation), 0);
    EXPECT_EQ(line.get_bin_directory(), Path(installation) /= Path("bin"));
    EXPECT_TRUE(line.get_installation_directory().is_directory());
  }
  qorin::testing::ScopedEnvironmentVariable vantrel_dir("VANTREL_DIR", file.string());
  qorin::CommandLine line;
  EXPECT_EQ(thrown_message<std::runtime_error>([&] { line.get_installation_directory(); }),
            "VANTREL_DIR is set to an invalid directory.  \"" + file.string() + "\" does not exist.");
}

TEST(CommandLine, ReportErrorWritesItsPrefixAndNoLineEnd) {
  qorin::CommandLineBase line;
  qorin::testing::StreamCapture capture(stderr);
  line.report_error("m");
  EXPECT_EQ(capture.release(), "Error setting up command line: m");
}

}  // namespace
