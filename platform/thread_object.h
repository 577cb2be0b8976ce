// Per-thread objects that are destroyed when their thread ends.
//
//   std::string& mine = detail::threadObject<std::string>();  // this thread's
//
// Use this instead of a thread_local with a destructor. MinGW emulates
// thread_local and frees a thread's emulated block and runs its destructors
// from two thread-exit hooks that run in no fixed order, so the destructor can
// run on freed memory. These objects live in the system's own per-thread slot
// instead (fiber-local storage on Windows, a pthread key on POSIX), whose
// cleanup runs while the object is intact. POSIX does not run the cleanup for
// the thread that calls exit(); its objects are left to the process's end.
#pragma once

#include <cstdint>

namespace qorin::detail {

// One per-thread pointer. The slot itself lives for the whole process.
class ThreadSlot {
 public:
  using Cleanup = void (*)(void* value);
  // `cleanup` receives each thread's non-null value when that thread ends.
  explicit ThreadSlot(Cleanup cleanup);
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;

  void* get() const;
  void set(void* value);

 private:
  std::uintptr_t key_;
};

// The calling thread's T, value-initialised on first use.
template <typename T>
T& threadObject() {
  static ThreadSlot slot([](void* value) { delete static_cast<T*>(value); });
  if (void* existing = slot.get()) return *static_cast<T*>(existing);
  T* created = new T();
  slot.set(created);
  return *created;
}

}  // namespace qorin::detail
