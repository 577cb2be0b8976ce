// Switches the C runtime and the C++ global locale (which streams copy) to
// the first German locale the platform knows, as a host program may, and
// back on destruction.
//
// Example:
//   CommaLocale german;
//   if (!german.active()) GTEST_SKIP();   // printf("%g", 1.5) now writes "1,5"
#pragma once

#include <clocale>
#include <cstdio>
#include <locale>
#include <stdexcept>
#include <string>

namespace qorin::testing {

struct CommaLocale {
  std::string savedC = std::setlocale(LC_ALL, nullptr);
  std::locale savedCpp;
  CommaLocale() {
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
    std::locale::global(savedCpp);
    std::setlocale(LC_ALL, savedC.c_str());
  }
  bool active() const {
    char text[16];
    std::snprintf(text, sizeof text, "%g", 1.5);
    return std::string(text) == "1,5";
  }
};

}  // namespace qorin::testing
