// A host program may switch the whole process to a comma-decimal locale;
// number text must not notice.
#include <qorin/text.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string>

namespace {

// Switches the C and C++ global locales to the first German one the
// platform knows, and back again.
class CommaLocale {
 public:
  CommaLocale() : saved_c_(std::setlocale(LC_ALL, nullptr)), saved_cpp_() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252", "German", "de-DE"}) {
      if (!std::setlocale(LC_ALL, name)) continue;
      name_ = name;
      try {
        std::locale::global(std::locale(name));
      } catch (const std::runtime_error&) {
        // libstdc++ on Windows knows only "C"; the C runtime's switch is the one that matters.
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

  // Whether the C runtime now really writes a decimal comma.
  bool active() const {
    char text[16];
    std::snprintf(text, sizeof text, "%g", 1.5);
    return !name_.empty() && std::string(text) == "1,5";
  }

 private:
  std::string saved_c_;
  std::locale saved_cpp_;
  std::string name_;
};

TEST(NumberLocale, CommaDecimalLocaleChangesNothing) {
  CommaLocale german;
  if (!german.active()) GTEST_SKIP() << "no comma-decimal locale installed (./scripts/bootstrap makes one)";
  // The runtime's own functions now read "1.5" as 1: that is what must not leak in.
  EXPECT_EQ(std::strtod("1.5", nullptr), 1.0);

  EXPECT_EQ(qorin::toDouble_nothrow("1.5"), 1.5);
  EXPECT_FALSE(qorin::isValidNumber("1,5"));
  EXPECT_EQ(qorin::toInt_or_throw("2.5"), 3);
  EXPECT_EQ(qorin::toDouble_only("1.5"), 1.5);
  EXPECT_EQ(qorin::toDouble_only("1,5"), 1.0);
  EXPECT_EQ(qorin::fromDouble(1.5, qorin::general, 6, 0), "1.5");
  EXPECT_EQ(qorin::fromDouble(1234567.25, qorin::fixed, 2, 0), "1234567.25");
  EXPECT_EQ(qorin::fromInt(-1234567, 0), "-1234567");
  EXPECT_EQ(qorin::fromUnsignedInt(1234567, 0), "1234567");
}

}  // namespace
