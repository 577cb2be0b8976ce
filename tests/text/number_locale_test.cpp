// A host program may switch the whole process to a comma-decimal locale;
// number text must not notice.
#include <qorin/text.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <stdexcept>
#include <string>

namespace {

// Switches the C runtime and the C++ global locale (which streams copy) to
// the first German locale the platform knows, and back.
class CommaLocale {
 public:
  CommaLocale() : saved_c_(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252", "German"}) {
      if (!std::setlocale(LC_ALL, name)) continue;
      try {
        std::locale::global(std::locale(name));
      } catch (const std::runtime_error&) {
        // libstdc++ on Windows knows only "C"; the C runtime's switch still counts.
      }
      break;
    }
  }
  ~CommaLocale() {
    std::locale::global(saved_cpp_);
    std::setlocale(LC_ALL, saved_c_.c_str());
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  std::string saved_c_;
  std::locale saved_cpp_;
};

TEST(NumberLocale, CommaDecimalLocaleChangesNothing) {
  CommaLocale german;
  char runtime_text[16];
  std::snprintf(runtime_text, sizeof runtime_text, "%g", 1.5);
  if (std::string(runtime_text) != "1,5") GTEST_SKIP() << "no comma-decimal locale (./scripts/bootstrap makes one)";
  EXPECT_EQ(std::strtod("1.5", nullptr), 1.0);  // what must not leak in

  EXPECT_EQ(qorin::toDouble_nothrow("1.5"), 1.5);
  EXPECT_FALSE(qorin::isValidNumber("1,5"));
  EXPECT_EQ(qorin::toInt_or_throw("2.5"), 3);
  EXPECT_EQ(qorin::toDouble_only("1.5"), 1.5);
  EXPECT_EQ(qorin::toDouble_only("1,5"), 1.0);
  EXPECT_EQ(qorin::fromDouble(1.5, qorin::general, 6, 0), "1.5");
  EXPECT_EQ(qorin::fromDouble(1234567.25, qorin::fixed, 2, 0), "1234567.25");
  EXPECT_EQ(qorin::fromInt(-1234567, 0), "-1234567");  // no grouping either
  EXPECT_EQ(qorin::fromUnsignedInt(1234567, 0), "1234567");
}

}  // namespace
