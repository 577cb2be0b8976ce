#include "platform/thread_object.h"

#include "platform/win32_api.h"

#include <new>

namespace qorin::detail {

// Fiber-local storage: its callback runs at thread end, before the thread's
// memory is released.
ThreadSlot::ThreadSlot(Cleanup cleanup) {
  const DWORD index = ::FlsAlloc(cleanup);
  if (index == FLS_OUT_OF_INDEXES) throw std::bad_alloc();
  key_ = index;
}

void* ThreadSlot::get() const { return ::FlsGetValue(static_cast<DWORD>(key_)); }

void ThreadSlot::set(void* value) {
  if (!::FlsSetValue(static_cast<DWORD>(key_), value)) throw std::bad_alloc();
}

}  // namespace qorin::detail
