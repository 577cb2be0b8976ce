// POSIX only: posix_spawnp with two pipes, poll, and signal forwarding.
#include "child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace qorin::tool {

namespace {

constexpr std::array<int, 4> kForwardedSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
constexpr std::size_t kChunkSize = 64 * 1024;

volatile sig_atomic_t forwardTo = 0;

// A signal sent by a process (kill, timeout, a service manager) reached the
// tool alone: pass it on. One the terminal sent (Ctrl-C, a hang-up) went to
// the whole foreground group, the program included, and is not doubled.
void forwardSignal(int signalNumber, siginfo_t* info, void*) {
  const pid_t child = forwardTo;
  if (child > 0 && info->si_code <= 0) ::kill(child, signalNumber);
}

// The tool's signal settings for the run: the forwarded signals caught
// (unless the tool was started with them ignored: a background job's program
// must ignore them too) and SIGPIPE ignored, so that a closed screen is an
// error to handle, not the tool's death. The program gets the dispositions
// the tool had.
class SignalSetup {
 public:
  SignalSetup() {
    struct sigaction forward {};
    forward.sa_sigaction = forwardSignal;
    forward.sa_flags = SA_SIGINFO | SA_RESTART;
    ::sigemptyset(&forward.sa_mask);
    ::sigemptyset(&toDefault_);
    for (int signalNumber : kForwardedSignals) {
      struct sigaction old {};
      ::sigaction(signalNumber, nullptr, &old);
      if (old.sa_handler == SIG_IGN) continue;
      ::sigaction(signalNumber, &forward, nullptr);
      ::sigaddset(&toDefault_, signalNumber);
    }
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &ignore, &oldPipe_);
    if (oldPipe_.sa_handler == SIG_DFL) ::sigaddset(&toDefault_, SIGPIPE);
  }
  ~SignalSetup() { ::sigaction(SIGPIPE, &oldPipe_, nullptr); }
  SignalSetup(const SignalSetup&) = delete;
  SignalSetup& operator=(const SignalSetup&) = delete;

  const sigset_t& toDefault() const { return toDefault_; }

 private:
  sigset_t toDefault_;
  struct sigaction oldPipe_ {};
};

// The forwarded signals held back while `forwardTo` changes, so that none
// is lost before the program exists nor sent to a pid already reaped.
class SignalBlock {
 public:
  SignalBlock() {
    sigset_t set;
    ::sigemptyset(&set);
    for (int signalNumber : kForwardedSignals) ::sigaddset(&set, signalNumber);
    ::pthread_sigmask(SIG_BLOCK, &set, &old_);
  }
  ~SignalBlock() { ::pthread_sigmask(SIG_SETMASK, &old_, nullptr); }
  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;

  const sigset_t& old() const { return old_; }

 private:
  sigset_t old_;
};

struct Pipe {
  int read = -1;
  int write = -1;

  // Both ends closed when the program starts: only the copies it gets on
  // its standard descriptors stay.
  bool open() {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return false;
    read = fds[0];
    write = fds[1];
    return true;
  }
};

// A standard descriptor the tool was started without (`qorin run ... >&-`)
// would be taken by the next pipe, which the tool would then write to as if
// it were the screen: /dev/null stands in, where writes go nowhere, as they
// would have.
void keepStandardDescriptorsOpen() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    if (::fcntl(fd, F_GETFD) < 0) ::open("/dev/null", fd == STDIN_FILENO ? O_RDONLY : O_WRONLY);
  }
}

void closeDescriptor(int& fd) {
  if (fd >= 0) ::close(fd);
  fd = -1;
}

pid_t spawn(const std::vector<std::string>& arguments, const Pipe& output, const Pipe& error,
            const SignalSetup& signals, const sigset_t& mask, std::string& reason) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, output.write, STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, error.write, STDERR_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  ::posix_spawnattr_setsigmask(&attributes, &mask);
  ::posix_spawnattr_setsigdefault(&attributes, &signals.toDefault());
  pid_t child = 0;
  const int failure = ::posix_spawnp(&child, argv[0], &actions, &attributes, argv.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) {
    reason = std::strerror(failure);
    return -1;
  }
  return child;
}

// Reads both pipes until each has reached its end (every writer closed it,
// background grandchildren included) or the receiver gave it up.
void readToTheEnd(int outputFd, int errorFd, const ChildChunkReceiver& receive) {
  // Output first when both wait: `echo a; echo b >&2` then logs in its order.
  std::array<pollfd, 2> fds = {pollfd{outputFd, POLLIN, 0}, pollfd{errorFd, POLLIN, 0}};
  const std::array<ChildStream, 2> streams = {ChildStream::output, ChildStream::error};
  std::vector<char> buffer(kChunkSize);
  while (fds[0].fd >= 0 || fds[1].fd >= 0) {
    if (::poll(fds.data(), fds.size(), -1) < 0) continue;  // EINTR: a forwarded signal
    for (std::size_t i = 0; i < fds.size(); ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      const ssize_t count = ::read(fds[i].fd, buffer.data(), buffer.size());
      if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
      if (count <= 0 || !receive(streams[i], std::string_view(buffer.data(), static_cast<std::size_t>(count)))) {
        ::close(fds[i].fd);
        fds[i].fd = -1;
      }
    }
  }
}

int waitForExit(pid_t child) {
  // Waited for without reaping first, so that a signal arriving meanwhile
  // still finds the program's pid, not a stranger's.
  siginfo_t info{};
  while (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
  }
  SignalBlock block;
  forwardTo = 0;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return WEXITSTATUS(status);
}

}  // namespace

ChildResult runChildProcess(const std::vector<std::string>& arguments, const ChildChunkReceiver& receive) {
  ChildResult result;
  keepStandardDescriptorsOpen();
  Pipe output;
  Pipe error;
  if (!output.open() || !error.open()) {
    result.error = std::strerror(errno);
    closeDescriptor(output.read);
    closeDescriptor(output.write);
    return result;
  }
  SignalSetup signals;
  pid_t child = -1;
  {
    SignalBlock block;
    child = spawn(arguments, output, error, signals, block.old(), result.error);
    if (child > 0) forwardTo = child;
  }
  closeDescriptor(output.write);
  closeDescriptor(error.write);
  if (child < 0) {
    closeDescriptor(output.read);
    closeDescriptor(error.read);
    return result;
  }
  result.started = true;
  readToTheEnd(output.read, error.read, receive);
  result.status = waitForExit(child);
  return result;
}

}  // namespace qorin::tool
