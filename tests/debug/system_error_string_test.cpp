#include <qorin/debug.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

#ifdef _WIN32
TEST(SystemErrorString, IsTheSystemTextWithItsLineEnd) {
  const std::string text = qorin::get_system_error_string(2);  // ERROR_FILE_NOT_FOUND
  ASSERT_GT(text.size(), 2u);
  EXPECT_EQ(text.substr(text.size() - 2), "\r\n");
  EXPECT_EQ(text.find('\0'), std::string::npos);
}
#else
TEST(SystemErrorString, IsStrerrorText) {
  for (unsigned long code : {1ul, 2ul, 13ul, 22ul, 0ul, 99999ul}) {
    EXPECT_EQ(qorin::get_system_error_string(code), std::strerror(static_cast<int>(code))) << code;
  }
}
#endif

}  // namespace
