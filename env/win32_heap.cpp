// Windows only: the process heap walked entry by entry.
#include "env/heap_os.h"

#include "platform/win32_api.h"

#include <stdexcept>

namespace qorin::detail {

HeapInfo os_heap_info() {
  const HANDLE heap = ::GetProcessHeap();
  if (!::HeapLock(heap)) throw std::runtime_error("failed to lock");
  HeapInfo info;
  PROCESS_HEAP_ENTRY entry{};
  while (::HeapWalk(heap, &entry)) {
    info.size += entry.cbData;
    info.overhead += entry.cbOverhead;
    ++info.count;
  }
  // Deliberately thrown before HeapUnlock: a failed walk leaves the heap
  // locked, and long-standing callers are written for that.
  if (::GetLastError() != ERROR_NO_MORE_ITEMS) throw std::runtime_error("heapwalk failed");
  ::HeapUnlock(heap);
  return info;
}

}  // namespace qorin::detail
