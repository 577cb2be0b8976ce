// POSIX only: interception with pipe/dup/dup2, waiting with poll on both
// pipes and a wake-up pipe.
#include "debug/log/stream_pipes.h"

#include "debug/log/standard_descriptors.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

namespace qorin::Debug::detail {

namespace {

constexpr int kDescriptors[] = {STDOUT_FILENO, STDERR_FILENO};

// The saved standard error while it is intercepted, for writeDiagnostic.
std::mutex diagnosticMutex;
int diagnosticFd = -1;

void setDiagnosticFd(int fd) {
  std::lock_guard<std::mutex> lock(diagnosticMutex);
  diagnosticFd = fd;
}

void writeAll(int fd, const char* data, std::size_t size) {
  while (fd >= 0 && size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    data += written;
    size -= static_cast<std::size_t>(written);
  }
}

void closeQuietly(int& fd) {
  if (fd >= 0) ::close(fd);
  fd = -1;
}

bool makePipe(int fds[2], bool nonBlockingRead) {
  if (::pipe2(fds, O_CLOEXEC) != 0) return false;
  if (nonBlockingRead) ::fcntl(fds[0], F_SETFL, ::fcntl(fds[0], F_GETFL) | O_NONBLOCK);
  return true;
}

// A pipe that carries wake-ups: neither end ever blocks, and a full pipe
// already holds a wake-up.
bool makeSignalPipe(int& readEnd, int& writeEnd) {
  int fds[2];
  if (!makePipe(fds, true)) return false;
  ::fcntl(fds[1], F_SETFL, ::fcntl(fds[1], F_GETFL) | O_NONBLOCK);
  readEnd = fds[0];
  writeEnd = fds[1];
  return true;
}

}  // namespace

struct StreamPipes::Impl {
  int readEnd[2] = {-1, -1};
  int saved[2] = {-1, -1};
  bool intercepted[2] = {false, false};
  bool drained[2] = {false, false};  // every writer has gone
  // Whether a read may find bytes: set by poll, cleared by a read that left
  // the pipe empty, so that an idle pipe costs no read.
  bool ready[2] = {true, true};
  int wakeRead = -1;
  int wakeWrite = -1;
  int drainedRead = -1;  // announceDrained -> awaitDrained
  int drainedWrite = -1;

  void intercept(StandardStream stream, int pipeSize, const char* failure) {
    int fds[2];
    if (!makePipe(fds, true)) throw std::runtime_error(failure);
#ifdef F_SETPIPE_SZ
    // Asked for, never shrunk: Linux's default is larger.
    if (::fcntl(fds[1], F_GETPIPE_SZ) < pipeSize) ::fcntl(fds[1], F_SETPIPE_SZ, pipeSize);
#else
    (void)pipeSize;
#endif
    const int target = kDescriptors[stream];
    std::setvbuf(stream == kStandardOutput ? stdout : stderr, nullptr, _IONBF, 0);
    saved[stream] = ::fcntl(target, F_DUPFD_CLOEXEC, 0);
    // dup2 leaves the new descriptor inheritable, so children write into the pipe.
    if (::dup2(fds[1], target) < 0) {
      ::close(fds[0]);
      ::close(fds[1]);
      closeQuietly(saved[stream]);
      throw std::runtime_error(failure);
    }
    ::close(fds[1]);
    readEnd[stream] = fds[0];
    intercepted[stream] = true;
    if (stream == kStandardError) setDiagnosticFd(saved[stream]);
  }
};

StreamPipes::StreamPipes(bool alsoStandardOutput, int pipeSize) : impl_(std::make_unique<Impl>()) {
  // A program started with a standard descriptor closed would otherwise get
  // a pipe end there, and interception would write into its own input.
  occupyStandardDescriptors();
  if (!makeSignalPipe(impl_->wakeRead, impl_->wakeWrite) || !makeSignalPipe(impl_->drainedRead, impl_->drainedWrite)) {
    throw std::runtime_error("Can't create stderr redirection pipe");
  }
  try {
    if (alsoStandardOutput) impl_->intercept(kStandardOutput, pipeSize, "Can't duplicate handle for stdout");
    impl_->intercept(kStandardError, pipeSize, "Can't create stderr redirection pipe");
  } catch (...) {
    restoreStandardStreams();
    throw;
  }
}

StreamPipes::~StreamPipes() {
  for (int stream : {kStandardOutput, kStandardError}) {
    closeQuietly(impl_->readEnd[stream]);
    closeQuietly(impl_->saved[stream]);
  }
  closeQuietly(impl_->wakeRead);
  closeQuietly(impl_->wakeWrite);
  closeQuietly(impl_->drainedRead);
  closeQuietly(impl_->drainedWrite);
}

bool StreamPipes::intercepts(StandardStream stream) const { return impl_->intercepted[stream]; }

long StreamPipes::readWaiting(StandardStream stream, char* buffer, std::size_t size) {
  const int fd = impl_->readEnd[stream];
  if (fd < 0 || impl_->drained[stream] || !impl_->ready[stream]) return 0;
  for (;;) {
    const ssize_t got = ::read(fd, buffer, size);
    // A pipe gives all it holds up to `size`: less means it is empty now.
    if (got > 0 && static_cast<std::size_t>(got) < size) impl_->ready[stream] = false;
    if (got > 0) return static_cast<long>(got);
    impl_->ready[stream] = false;
    if (got == 0) {
      impl_->drained[stream] = true;
      return 0;
    }
    if (errno == EINTR) continue;
    return errno == EAGAIN || errno == EWOULDBLOCK ? 0 : -1;
  }
}

void StreamPipes::waitForData() {
  pollfd fds[3];
  int streamOf[3] = {-1, -1, -1};
  nfds_t count = 0;
  fds[count++] = {impl_->wakeRead, POLLIN, 0};
  for (int stream : {kStandardOutput, kStandardError}) {
    if (impl_->readEnd[stream] < 0 || impl_->drained[stream]) continue;
    streamOf[count] = stream;
    fds[count++] = {impl_->readEnd[stream], POLLIN, 0};
  }
  if (::poll(fds, count, -1) <= 0) {
    expectData();
    return;
  }
  for (nfds_t i = 1; i < count; ++i) impl_->ready[streamOf[i]] = fds[i].revents != 0;
  if (fds[0].revents & POLLIN) {
    char sink[64];
    while (::read(impl_->wakeRead, sink, sizeof sink) > 0) {
    }
  }
}

void StreamPipes::expectData() { impl_->ready[0] = impl_->ready[1] = true; }

void StreamPipes::wake() {
  const char byte = 1;
  // A full wake-up pipe already holds a wake-up: nothing is lost.
  [[maybe_unused]] const ssize_t written = ::write(impl_->wakeWrite, &byte, 1);
}

void StreamPipes::announceDrained() {
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = ::write(impl_->drainedWrite, &byte, 1);
}

bool StreamPipes::awaitDrained(int milliseconds) {
  pollfd drained = {impl_->drainedRead, POLLIN, 0};
  if (::poll(&drained, 1, milliseconds) <= 0) return false;
  char byte;
  return ::read(impl_->drainedRead, &byte, 1) == 1;
}

bool StreamPipes::savedValid(StandardStream stream) const { return impl_->saved[stream] >= 0; }

void StreamPipes::writeSaved(StandardStream stream, const char* data, std::size_t size) {
  writeAll(impl_->saved[stream], data, size);
}

void StreamPipes::restoreStandardStreams() {
  if (impl_->intercepted[kStandardError]) setDiagnosticFd(-1);
  for (int stream : {kStandardOutput, kStandardError}) {
    if (!impl_->intercepted[stream]) continue;
    const int target = kDescriptors[stream];
    if (impl_->saved[stream] >= 0) {
      ::dup2(impl_->saved[stream], target);
    } else {
      ::close(target);
    }
    impl_->intercepted[stream] = false;
  }
}

void writeDiagnostic(std::string_view text) {
  std::lock_guard<std::mutex> lock(diagnosticMutex);
  writeAll(diagnosticFd >= 0 ? diagnosticFd : STDERR_FILENO, text.data(), text.size());
}

void callAtProcessExit(void (*hook)()) { std::atexit(hook); }

}  // namespace qorin::Debug::detail
