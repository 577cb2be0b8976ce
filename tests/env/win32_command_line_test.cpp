#include <qorin/env.h>

#include "platform/win32_api.h"

#include <gtest/gtest.h>
#include <utf8.h>

#include <cwchar>

namespace {

// The wide command line lives in the process's own parameter block, so the
// test can plant an unpaired surrogate in it for one call and put it back.
TEST(CommandLine, UnpairedSurrogateInTheWideCommandLineIsAConversionError) {
  wchar_t* line = ::GetCommandLineW();
  const size_t length = std::wcslen(line);
  ASSERT_GT(length, 0u);
  const wchar_t kept = line[length - 1];
  line[length - 1] = 0xD800;
  qorin::CommandLineBase command_line;
  const char* argv[] = {"ignored", nullptr};
  EXPECT_THROW(command_line.initialize_args(1, argv), utf8::invalid_utf16);
  line[length - 1] = kept;
}

}  // namespace
