// The one place that includes <windows.h>. Only win32_*.cpp files include
// this header; public headers never do.
//
// RAII owners for the handles the library opens, so that no error path leaks
// one:
//   UniqueHandle pipe_read{read_handle};      // CloseHandle on destruction
//   UniqueRegKey key{hkey};                   // RegCloseKey on destruction
//   UniqueLocalMemory message{buffer};        // LocalFree on destruction
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <utility>

namespace qorin::win32 {

template <typename Handle, typename Traits>
class UniqueOwner {
 public:
  UniqueOwner() = default;
  explicit UniqueOwner(Handle handle) : handle_(handle) {}
  ~UniqueOwner() { reset(); }
  UniqueOwner(UniqueOwner&& other) noexcept : handle_(std::exchange(other.handle_, Traits::invalid())) {}
  UniqueOwner& operator=(UniqueOwner&& other) noexcept {
    if (this != &other) {
      reset();
      handle_ = std::exchange(other.handle_, Traits::invalid());
    }
    return *this;
  }
  UniqueOwner(const UniqueOwner&) = delete;
  UniqueOwner& operator=(const UniqueOwner&) = delete;

  Handle get() const { return handle_; }
  Handle* out() { reset(); return &handle_; }  // for Win32 calls that fill a handle
  Handle release() { return std::exchange(handle_, Traits::invalid()); }
  explicit operator bool() const { return handle_ != Traits::invalid(); }
  void reset() {
    if (handle_ != Traits::invalid()) Traits::close(handle_);
    handle_ = Traits::invalid();
  }

 private:
  Handle handle_ = Traits::invalid();
};

struct HandleTraits {
  static HANDLE invalid() { return nullptr; }
  static void close(HANDLE h) {
    if (h != INVALID_HANDLE_VALUE) ::CloseHandle(h);
  }
};
struct RegKeyTraits {
  static HKEY invalid() { return nullptr; }
  static void close(HKEY key) { ::RegCloseKey(key); }
};
struct LocalMemoryTraits {
  static HLOCAL invalid() { return nullptr; }
  static void close(HLOCAL memory) { ::LocalFree(memory); }
};

using UniqueHandle = UniqueOwner<HANDLE, HandleTraits>;
using UniqueRegKey = UniqueOwner<HKEY, RegKeyTraits>;
using UniqueLocalMemory = UniqueOwner<HLOCAL, LocalMemoryTraits>;

}  // namespace qorin::win32
