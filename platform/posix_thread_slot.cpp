#include "platform/thread_object.h"

#include <pthread.h>

#include <new>

namespace qorin::detail {

ThreadSlot::ThreadSlot(Cleanup cleanup) {
  pthread_key_t key;
  if (pthread_key_create(&key, cleanup) != 0) throw std::bad_alloc();
  key_ = key;
}

void* ThreadSlot::get() const { return pthread_getspecific(static_cast<pthread_key_t>(key_)); }

void ThreadSlot::set(void* value) {
  if (pthread_setspecific(static_cast<pthread_key_t>(key_), value) != 0) throw std::bad_alloc();
}

}  // namespace qorin::detail
