// glibc only: the allocator's own statistics (see HeapInfo for the mapping).
#include "env/heap_os.h"

#include <malloc.h>

namespace qorin::detail {

HeapInfo os_heap_info() {
  const struct mallinfo2 m = ::mallinfo2();
  HeapInfo info;
  info.size = m.uordblks + m.hblkhd;
  info.overhead = m.fordblks;
  info.count = m.ordblks + m.smblks + m.hblks;
  return info;
}

}  // namespace qorin::detail
