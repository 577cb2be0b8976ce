#include <qorin/env.h>

#include "env/heap_os.h"

#include <gtest/gtest.h>

#include <cctype>

namespace {

TEST(ProductIdentity, DefaultsUntilTheHostRenames) {
  EXPECT_EQ(qorin::get_product_name() + " " + qorin::get_product_version(), "Torvo 4.10");
  qorin::initialize_product_and_ver("Demo", "1.5");
  EXPECT_EQ(qorin::get_product_name() + " " + qorin::get_product_version(), "Demo 1.5");
  // An emptied version is filled again, and so is the name with it.
  qorin::initialize_product_and_ver("Demo", "");
  EXPECT_EQ(qorin::get_product_name() + " " + qorin::get_product_version(), "Torvo 4.10");
}

TEST(HeapReport, LineTruncatesToKitemsAndMegabytes) {
  struct Case { qorin::HeapInfo info; const char* expected; };
  const Case cases[] = {
      {{1048575, 1048575, 1023}, "Heap Count = 0 Kitems  Size = 0 MB  Overhead = 0 MB   Total = 1 MB"},
      {{3145728, 1572864, 5000}, "Heap Count = 4 Kitems  Size = 3 MB  Overhead = 1 MB   Total = 4 MB"},
      {{1ull << 40, 0, 1ull << 33}, "Heap Count = 8388608 Kitems  Size = 1048576 MB  Overhead = 0 MB   Total = 1048576 MB"},
  };
  for (const Case& c : cases) EXPECT_EQ(qorin::detail::format_heap_info(c.info), c.expected);
}

TEST(HeapReport, LiveHeap) {
  std::string shape;
  for (const char c : qorin::get_heap_info_string()) {
    if (!std::isdigit(static_cast<unsigned char>(c))) shape += c;
    else if (shape.empty() || shape.back() != '#') shape += '#';
  }
  EXPECT_EQ(shape, "Heap Count = # Kitems  Size = # MB  Overhead = # MB   Total = # MB");
}

}  // namespace
