// glibc's statistics: large blocks are mapped on their own, outside the
// arenas, and the report must count them too.
#include <qorin/env.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// The sanitizers bring their own allocator, which glibc's figures never see.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kGlibcAllocator = false;
#else
constexpr bool kGlibcAllocator = true;
#endif

TEST(HeapReport, TenMegabytesMoveTheFigures) {
  if (!kGlibcAllocator) GTEST_SKIP() << "a sanitizer's allocator";
  constexpr std::uint64_t kSize = 10 * 1048576;
  const qorin::HeapInfo before = qorin::get_heap_size();
  char* block = static_cast<char*>(std::malloc(kSize));
  ASSERT_NE(block, nullptr);
  std::memset(block, 1, kSize);
  const qorin::HeapInfo during = qorin::get_heap_size();
  const std::string line = qorin::get_heap_info_string();
  // An opaque use, so that the compiler keeps the allocation.
  volatile char last = block[kSize - 1];
  std::free(block);
  const qorin::HeapInfo after = qorin::get_heap_size();
  EXPECT_EQ(last, 1);
  EXPECT_GE(during.size, before.size + kSize);
  EXPECT_GE(during.count, before.count + 1);
  EXPECT_GE(during.size - after.size, kSize);
  EXPECT_NE(line.find("Size = 1"), std::string::npos) << line;  // at least 10 MB
}

}  // namespace
