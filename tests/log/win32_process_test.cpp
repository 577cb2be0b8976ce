// The logger in a Windows program started without standard handles (a
// service, a program without a console): its C streams have no descriptor.
#include <qorin/debug.h>

#include <qorin/env.h>

#include "platform/win32_api.h"
#include "support/temporary_file_name.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace qorin::Debug;

constexpr char kStoryVariable[] = "QORIN_DETACHED_STORY_LOG";

// The child's part: printf and fputs(stderr) must reach the log.
void detachedStory(const char* log) {
  const bool detached = _fileno(stdout) < 0 && _fileno(stderr) < 0;

  Logger::initialize(log, false);
  Logger::redirectStandardOutputs(true, false);
  Logger::start();
  std::printf("printf %s\n", detached ? "detached" : "attached");
  Logger::waitForStreamSync();
  std::fputs("fputs to stderr\n", stderr);
  Logger::waitForStreamSync();
  Logger::shutdown();
  std::_Exit(0);
}

TEST(LoggerWithoutStandardHandles, TheCStreamsAreAttached) {
  const char* story = std::getenv(kStoryVariable);
  if (story && *story) detachedStory(story);
  const qorin::testing::TemporaryFileName log("detached");
  qorin::putEnvKstring(kStoryVariable, log.name());
  wchar_t self[MAX_PATH];
  ASSERT_GT(::GetModuleFileNameW(nullptr, self, MAX_PATH), 0u);
  std::wstring commandLine = L"\"" + std::wstring(self) +
                             L"\" --gtest_filter=LoggerWithoutStandardHandles.TheCStreamsAreAttached";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;  // all three null
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(::CreateProcessW(self, commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr,
                               &startup, &process));
  qorin::putEnvKstring(kStoryVariable, "");
  const DWORD waited = ::WaitForSingleObject(process.hProcess, 60000);
  DWORD code = 1;
  ::GetExitCodeProcess(process.hProcess, &code);
  if (waited != WAIT_OBJECT_0) ::TerminateProcess(process.hProcess, 9);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  ASSERT_EQ(waited, WAIT_OBJECT_0);
  EXPECT_EQ(code, 0u);
  EXPECT_EQ(log.read(), "s:printf detached\ns:fputs to stderr\n");
}

}  // namespace
