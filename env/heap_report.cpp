#include <qorin/env.h>

#include "env/heap_os.h"

namespace qorin {

HeapInfo get_heap_size() { return detail::os_heap_info(); }

std::string get_heap_info_string() {
  try {
    return detail::format_heap_info(get_heap_size());
  } catch (...) {
    return "Error getting heap information";
  }
}

}  // namespace qorin
