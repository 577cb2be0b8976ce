// The logger inside processes it did not write: started with standard
// descriptors closed, forking, dying of signals, starting children.
#include <qorin/debug.h>

#include "log/interception_child.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <set>

namespace {

using namespace qorin::Debug;
using qorin::testing::SharedLogFile;
using LoggerProcess = qorin::testing::InterceptionTest;

// Whatever is closed at start, each line reaches the log once and nothing
// loops (the log file or a pipe end would otherwise become descriptor 1).
TEST_F(LoggerProcess, ClosedStandardDescriptorsAtStart) {
  // Interception alone, no file opened before the pipes.
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(30);
    ::close(1);
    ::close(2);
    auto output = qorin::testing::interceptStreams(true);
    std::fputs("out\n", stdout);
    std::fputs("err\n", stderr);
    Logger::waitForStreamSync();
    return qorin::testing::expectLines(output->lines(), {"0|out\n", "0|err\n"});
  });
  const SharedLogFile log("QORIN_CLOSED_TEST_LOG", "closed");
  const std::vector<std::vector<int>> closedSets = {{0}, {1}, {2}, {1, 2}, {0, 1, 2}};
  for (const std::vector<int>& closed : closedSets) {
    std::remove(log.name().c_str());
    EXPECT_EXIT(
        {
          qorin::testing::watchdog(30);
          for (int fd : closed) ::close(fd);
          qorinCoreLogInterceptStreamsFlag().setNumericValue(1);
          if (!Logger::initialize(log.name().c_str(), true)) std::_Exit(1);
          std::fputs("out\n", stdout);
          Logger::waitForStreamSync();
          std::fputs("err\n", stderr);
          Logger::waitForStreamSync();
          Logger::shutdown();
          std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "")
        << closed.size() << " closed, the first " << closed[0];
    EXPECT_EQ(log.read(), "s:out\ns:err\n") << closed.size() << " closed, the first " << closed[0];
  }
}

// A forked child shares the pipes but not the stream thread: whether it
// exits, _exits or execs, the parent logs every line once and the child
// neither steals the parent's bytes nor repeats its unfinished line.
TEST_F(LoggerProcess, ForkedChildrenLeaveThePipesToTheParent) {
  if (qorin::testing::kSanitized) GTEST_SKIP() << "the leak check of each exiting child writes into the pipes";
  const SharedLogFile log("QORIN_FORK_TEST_LOG", "fork");
  EXPECT_EXIT(
      {
        qorin::testing::watchdog(30);
        Logger::initialize(log.name().c_str(), false);
        Logger::redirectStandardOutputs(true, false);
        Logger::start();
        std::fputs("parent's unfinished line", stderr);  // stderr: its own line, apart from the children's
        Logger::waitForStreamSync();
        for (int way = 0; way < 3; ++way) {
          const pid_t child = ::fork();
          if (child == 0) {
            std::printf("child %d\n", way);
            if (way == 0) std::exit(0);
            if (way == 1) ::_exit(0);
            ::execl("/bin/echo", "echo", "exec'd child", static_cast<char*>(nullptr));
            ::_exit(127);
          }
          int status = 0;
          ::waitpid(child, &status, 0);
        }
        std::fputs(" ends now\n", stderr);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  const std::string got = log.read();
  EXPECT_EQ(qorin::testing::expectLines(
                [&] {
                  std::vector<std::string> lines;
                  for (std::size_t from = 0, end; (end = got.find('\n', from)) != std::string::npos; from = end + 1) {
                    lines.push_back(got.substr(from, end + 1 - from));
                  }
                  return lines;
                }(),
                {"s:child 0\n", "s:child 1\n", "s:child 2\n", "s:exec'd child\n", "s:parent's unfinished line ends now\n"}),
            "");
}

// A fatal signal drains the pipes, then the handler that was there before
// runs: a program's own crash handler still has its say.
TEST_F(LoggerProcess, FatalSignalsChainToThePreviousHandler) {
  const SharedLogFile log("QORIN_SIGNAL_TEST_LOG", "signal");
  struct Case { int signal; bool ownHandler; };
  for (const Case c : {Case{SIGBUS, false}, Case{SIGFPE, false}, Case{SIGSEGV, true}}) {
    std::remove(log.name().c_str());
    const auto statement = [&] {
      if (c.ownHandler) {
        // Installed before the logger: appends a mark to the log and exits 7.
        static int logFd = -1;
        logFd = ::open(log.name().c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        ::signal(c.signal, [](int) {
          [[maybe_unused]] const ssize_t written = ::write(logFd, "own handler\n", 12);
          ::_exit(7);
        });
      }
      Logger::initialize(log.name().c_str(), false);
      Logger::redirectStandardOutputs(true, false);
      Logger::start();
      const std::string burst = qorin::testing::numberedLines("line", 5000);
      std::fwrite(burst.data(), 1, burst.size(), stdout);
      ::raise(c.signal);
    };
    // A sanitizer's own handler reports into the pipes and exits instead.
    const auto diedOfIt = [&](int status) {
      return qorin::testing::kSanitized ? status != 0 : ::testing::KilledBySignal(c.signal)(status);
    };
    if (c.ownHandler) {
      EXPECT_EXIT(statement(), ::testing::ExitedWithCode(7), "");
    } else {
      EXPECT_EXIT(statement(), diedOfIt, "");
    }
    const std::string lines = qorin::testing::numberedLines("line", 5000, true);
    const std::string expected = lines + (c.ownHandler ? "own handler\n" : "");
    const std::string got = log.read();
    EXPECT_TRUE(qorin::testing::kSanitized && !c.ownHandler ? got.compare(0, lines.size(), lines) == 0 : got == expected)
        << "signal " << c.signal << ": " << got.size() << " bytes, the end: " << got.substr(got.size() > 300 ? got.size() - 300 : 0);
  }
}

std::set<int> inheritableDescriptors() {
  std::set<int> found;
  DIR* folder = ::opendir("/proc/self/fd");
  while (dirent* entry = folder ? ::readdir(folder) : nullptr) {
    const int fd = std::atoi(entry->d_name);
    if (entry->d_name[0] != '.' && fd != ::dirfd(folder) && !(::fcntl(fd, F_GETFD) & FD_CLOEXEC)) found.insert(fd);
  }
  if (folder) ::closedir(folder);
  return found;
}

// Children inherit the standard descriptors (the pipes' write ends) and
// nothing else the logger opened: no read end, saved stream or log file.
TEST_F(LoggerProcess, ChildrenInheritOnlyTheStandardDescriptors) {
  EXPECT_IN_CHILD([] {
    const std::set<int> before = inheritableDescriptors();
    const qorin::testing::TemporaryFileName log("inherit");
    Logger::initialize(log.name().c_str(), false);
    Logger::redirectStandardOutputs(true, true);
    Logger::start();
    const std::set<int> after = inheritableDescriptors();
    std::string complaint;
    for (int fd : after) {
      if (!before.count(fd)) complaint += "inheritable: " + std::to_string(fd) + "\n";
    }
    return complaint;
  });
}

}  // namespace
