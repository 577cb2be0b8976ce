#include <qorin/debug.h>

#include "support/stream_capture.h"
#include "support/temporary_file_name.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The log file is created 0644 (under the umask) and a child process started
// by exec does not inherit it: a child that outlives the program must not
// keep it open.
TEST(LogFile, CreatedReadableForAllAndClosedOnExec) {
  qorin::testing::TemporaryFileName log("mode");
  const mode_t previous = ::umask(0);
  qorin::Debug::OutputHandlerFile file(log.name());
  ::umask(previous);
  struct stat status {};
  ASSERT_EQ(::stat(log.name().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0644u);
  int withCloexec = 0;
  for (int fd = 3; fd < 1024; ++fd) {
    const int flags = ::fcntl(fd, F_GETFD);
    char target[4096] = {};
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    if (flags >= 0 && ::readlink(link.c_str(), target, sizeof target - 1) > 0 && log.name() == target) {
      withCloexec += (flags & FD_CLOEXEC) ? 1 : -100;
    }
  }
  EXPECT_EQ(withCloexec, 1);
}

// A full disk: every write fails, the first failure is kept and reported
// once, later lines are still tried.
TEST(LogFile, AFailedWriteIsReportedOnceAndKept) {
  qorin::Debug::OutputHandlerFile file("/dev/full");
  ASSERT_TRUE(file.valid());
  EXPECT_FALSE(file.writeError());
  qorin::testing::StreamCapture err(stderr);
  file.logMsg(qorin::Debug::STD_MSG, "a\n", "a\n");
  file.logMsg(qorin::Debug::STD_MSG, "b\n", "b\n");
  EXPECT_EQ(err.release(), "Can't write log file: \"/dev/full\": No space left on device\n");
  EXPECT_EQ(file.writeError(), std::errc::no_space_on_device);
  EXPECT_TRUE(file.reopen("/dev/null"));
  EXPECT_FALSE(file.writeError());
}

}  // namespace
