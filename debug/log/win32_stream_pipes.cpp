// Windows only: interception with CreatePipe, SetStdHandle, _open_osfhandle
// and _dup2; reading with PeekNamedPipe and ReadFile. Anonymous pipes cannot
// be waited on, so the reader waits on an event that wake() sets, with a
// short time-out between peeks.
#include "debug/log/stream_pipes.h"

#include "debug/log/standard_descriptors.h"

#include "platform/win32_api.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <mutex>
#include <stdexcept>

namespace qorin::Debug::detail {

namespace {

constexpr DWORD kStdHandles[] = {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
constexpr int kDescriptors[] = {1, 2};
// Between peeks while idle: bounds the delay of a line that arrives then.
// After a read the reader only yields, so a steady writer never waits on it.
constexpr DWORD kPeekIntervalMs = 5;

// A handle that can be handed out again: null and INVALID_HANDLE_VALUE are not.
bool usable(HANDLE handle) { return handle != nullptr && handle != INVALID_HANDLE_VALUE; }

HANDLE duplicate(HANDLE handle, BOOL inherit) {
  HANDLE copy = nullptr;
  if (!usable(handle) ||
      !::DuplicateHandle(::GetCurrentProcess(), handle, ::GetCurrentProcess(), &copy, 0, inherit, DUPLICATE_SAME_ACCESS)) {
    return nullptr;
  }
  return copy;
}

// Makes `handle` (owned by the descriptor afterwards) the process's
// standard handle and C runtime descriptor for `stream`; the descriptor that
// wraps it is returned, -1 on failure.
int install(StandardStream stream, HANDLE handle) {
  ::SetStdHandle(kStdHandles[stream], handle);
  const int fd = ::_open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_TEXT | _O_WRONLY);
  if (fd < 0) return -1;
  // _dup2 duplicates the handle inheritably and, for descriptors 0 to 2,
  // makes the copy the standard handle too.
  if (::_dup2(fd, kDescriptors[stream]) != 0) {
    ::_close(fd);
    return -1;
  }
  return fd;
}

// The saved standard error while it is intercepted, for writeDiagnostic.
std::mutex diagnosticMutex;
HANDLE diagnosticHandle = nullptr;

void setDiagnosticHandle(HANDLE handle) {
  std::lock_guard<std::mutex> lock(diagnosticMutex);
  diagnosticHandle = handle;
}

void writeAll(HANDLE handle, const char* data, std::size_t size) {
  while (usable(handle) && size > 0) {
    DWORD written = 0;
    const DWORD chunk = size > 0x40000000u ? 0x40000000u : static_cast<DWORD>(size);
    if (!::WriteFile(handle, data, chunk, &written, nullptr) || written == 0) return;
    data += written;
    size -= written;
  }
}

std::FILE* cStream(StandardStream stream) { return stream == kStandardOutput ? stdout : stderr; }

// A program started without standard handles has C streams with no
// descriptor (_fileno -2): printf would fail even with descriptor 1 a pipe.
// The runtime refuses to freopen such a stream, so it takes the state of a
// stream opened on a copy of `target` (msvcrt's FILE is a plain structure).
// Returns the copy, which the stream then owns, or -1 when the stream had a
// descriptor already.
int attachCStream(StandardStream stream, int target) {
  std::FILE* file = cStream(stream);
  if (::_fileno(file) >= 0) return -1;
  const int copy = ::_dup(target);
  std::FILE* opened = copy >= 0 ? ::_fdopen(copy, "w") : nullptr;
  if (!opened) {
    if (copy >= 0) ::_close(copy);
    return -1;
  }
  *file = *opened;
  // `opened` is left open: closing it would close `copy`, which `file` uses now.
  std::setvbuf(file, nullptr, _IONBF, 0);
  return copy;
}

// Points an attached C stream's descriptor back at the null device.
void detachCStream(int fd) {
  const int nul = ::_open("NUL", _O_WRONLY | _O_NOINHERIT);
  if (nul < 0) return;
  ::_dup2(nul, fd);
  ::_close(nul);
}

}  // namespace

struct StreamPipes::Impl {
  win32::UniqueHandle readEnd[2];
  win32::UniqueHandle saved[2];
  int writeDescriptor[2] = {-1, -1};  // owns the pipe's write end
  int attachedDescriptor[2] = {-1, -1};
  bool intercepted[2] = {false, false};
  bool drained[2] = {false, false};
  bool readSinceWait = false;
  win32::UniqueHandle wakeEvent;
  win32::UniqueHandle drainedEvent;

  void intercept(StandardStream stream, int pipeSize, const char* failure) {
    // Neither end inheritable at creation: flagging the read end afterwards
    // races with a CreateProcess on another thread. The standard handle that
    // _dup2 makes from the write end is the one children inherit.
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (!::CreatePipe(&read, &write, nullptr, static_cast<DWORD>(pipeSize))) throw std::runtime_error(failure);
    readEnd[stream] = win32::UniqueHandle(read);
    std::setvbuf(cStream(stream), nullptr, _IONBF, 0);
    saved[stream] = win32::UniqueHandle(duplicate(::GetStdHandle(kStdHandles[stream]), FALSE));
    writeDescriptor[stream] = install(stream, write);
    if (writeDescriptor[stream] < 0) {
      ::CloseHandle(write);
      readEnd[stream].reset();
      if (saved[stream]) ::SetStdHandle(kStdHandles[stream], saved[stream].get());
      saved[stream].reset();
      throw std::runtime_error(failure);
    }
    attachedDescriptor[stream] = attachCStream(stream, kDescriptors[stream]);
    intercepted[stream] = true;
    if (stream == kStandardError) setDiagnosticHandle(saved[stream].get());
  }
};

StreamPipes::StreamPipes(bool alsoStandardOutput, int pipeSize) : impl_(std::make_unique<Impl>()) {
  occupyStandardDescriptors();
  impl_->wakeEvent = win32::UniqueHandle(::CreateEventW(nullptr, FALSE, FALSE, nullptr));
  impl_->drainedEvent = win32::UniqueHandle(::CreateEventW(nullptr, FALSE, FALSE, nullptr));
  if (!impl_->wakeEvent || !impl_->drainedEvent) throw std::runtime_error("Can't create stderr redirection pipe");
  try {
    if (alsoStandardOutput) impl_->intercept(kStandardOutput, pipeSize, "Can't duplicate handle for stdout");
    impl_->intercept(kStandardError, pipeSize, "Can't create stderr redirection pipe");
  } catch (...) {
    restoreStandardStreams();
    throw;
  }
}

StreamPipes::~StreamPipes() = default;

bool StreamPipes::intercepts(StandardStream stream) const { return impl_->intercepted[stream]; }

long StreamPipes::readWaiting(StandardStream stream, char* buffer, std::size_t size) {
  HANDLE read = impl_->readEnd[stream].get();
  if (!read || impl_->drained[stream]) return 0;
  DWORD waiting = 0;
  if (!::PeekNamedPipe(read, nullptr, 0, nullptr, &waiting, nullptr)) {
    if (::GetLastError() != ERROR_BROKEN_PIPE) return -1;
    impl_->drained[stream] = true;
    return 0;
  }
  if (waiting == 0) return 0;
  DWORD got = 0;
  const DWORD want = waiting < size ? waiting : static_cast<DWORD>(size);
  if (!::ReadFile(read, buffer, want, &got, nullptr)) return -1;
  impl_->readSinceWait = impl_->readSinceWait || got > 0;
  return static_cast<long>(got);
}

void StreamPipes::waitForData() {
  if (impl_->readSinceWait) {
    impl_->readSinceWait = false;
    ::SwitchToThread();
    return;
  }
  ::WaitForSingleObject(impl_->wakeEvent.get(), kPeekIntervalMs);
}

// Every read peeks first: there is nothing to forget.
void StreamPipes::expectData() {}

void StreamPipes::wake() { ::SetEvent(impl_->wakeEvent.get()); }

void StreamPipes::announceDrained() { ::SetEvent(impl_->drainedEvent.get()); }

bool StreamPipes::awaitDrained(int milliseconds) {
  return ::WaitForSingleObject(impl_->drainedEvent.get(), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
}

bool StreamPipes::savedValid(StandardStream stream) const { return static_cast<bool>(impl_->saved[stream]); }

void StreamPipes::writeSaved(StandardStream stream, const char* data, std::size_t size) {
  writeAll(impl_->saved[stream].get(), data, size);
}

void StreamPipes::restoreStandardStreams() {
  if (impl_->intercepted[kStandardError]) setDiagnosticHandle(nullptr);
  for (StandardStream stream : {kStandardOutput, kStandardError}) {
    if (!impl_->intercepted[stream]) continue;
    HANDLE copy = duplicate(impl_->saved[stream].get(), TRUE);
    const int fd = copy ? install(stream, copy) : -1;
    if (fd >= 0) {
      ::_close(fd);
    } else {
      if (copy) ::CloseHandle(copy);
      ::_close(kDescriptors[stream]);
      ::SetStdHandle(kStdHandles[stream], nullptr);
    }
    if (impl_->attachedDescriptor[stream] >= 0) detachCStream(impl_->attachedDescriptor[stream]);
    impl_->attachedDescriptor[stream] = -1;
    if (impl_->writeDescriptor[stream] >= 0) ::_close(impl_->writeDescriptor[stream]);
    impl_->writeDescriptor[stream] = -1;
    impl_->intercepted[stream] = false;
  }
}

void writeDiagnostic(std::string_view text) {
  std::lock_guard<std::mutex> lock(diagnosticMutex);
  writeAll(diagnosticHandle ? diagnosticHandle : ::GetStdHandle(STD_ERROR_HANDLE), text.data(), text.size());
}

namespace {

void (*exitHook)() = nullptr;

int __cdecl runExitHook() {
  exitHook();
  return 0;
}

}  // namespace

void callAtProcessExit(void (*hook)()) {
  exitHook = hook;
  using OnExit = int(__cdecl*)();
  using RegisterOnExit = OnExit(__cdecl*)(OnExit);
  // msvcrt.dll's own _onexit fills the list that exit() runs before
  // ExitProcess; the one this DLL links to is its private list.
  const auto processWide = reinterpret_cast<RegisterOnExit>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), "_onexit")));
  HMODULE self = nullptr;
  // Pinned: the list outlives any FreeLibrary of this DLL.
  const bool pinned = ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                                           reinterpret_cast<LPCWSTR>(&runExitHook), &self);
  if (processWide == nullptr || !pinned || processWide(&runExitHook) == nullptr) std::atexit(hook);
}

}  // namespace qorin::Debug::detail
