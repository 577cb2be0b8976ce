// The generated upper-case table against the system's own CharUpperW, for
// every UTF-16 code unit. The table is internal to the library, so this test
// compiles its own copy of it.
#include "fs/upper_case.cpp"
#include "fs/upper_case_table.cpp"

#include "platform/win32_api.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

TEST(Win32UpperCase, TableMatchesCharUpperW) {
  int differences = 0;
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    // A pointer whose high word is zero asks for one character.
    const auto system = static_cast<char16_t>(reinterpret_cast<ULONG_PTR>(
        ::CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(unit)))));
    const char16_t table = qorin::detail::upper_case_unit(char16_t(unit));
    if (system != table) {
      ++differences;
      std::printf("U+%04X: CharUpperW U+%04X, table U+%04X\n", unit, unsigned(system), unsigned(table));
    }
  }
  EXPECT_EQ(differences, 0);
}

}  // namespace
