// The platform's view of the process heap (win32_heap.cpp, posix_heap.cpp).
// What each platform counts is documented with HeapInfo in <qorin/env.h>.
#pragma once

#include <qorin/env.h>

#include <fmt/format.h>

#include <string>

namespace qorin::detail {

// Throws std::runtime_error when the platform cannot report.
HeapInfo os_heap_info();

// The heap line for `info`; header-inline so tests can feed it any figures.
//
// Example:
//   {size 1048575, overhead 1048576, count 2048}
//     => "Heap Count = 2 Kitems  Size = 0 MB  Overhead = 1 MB   Total = 1 MB"
inline std::string format_heap_info(const HeapInfo& info) {
  constexpr std::uint64_t kMB = 1048576;
  return fmt::format("Heap Count = {} Kitems  Size = {} MB  Overhead = {} MB   Total = {} MB",
                     info.count / 1024, info.size / kMB, info.overhead / kMB,
                     (info.size + info.overhead) / kMB);
}

}  // namespace qorin::detail
