// Differential: the hand-written _QDX_DEBUG_FLAGS matcher against std::regex
// with the grammar's three patterns. Any difference in names, value texts,
// skipped entries or where reading ends is a crash.
#include "debug/flag_settings_parser.h"
#include "tests/support/regex_flag_settings.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using qorin::Debug::detail::FlagSettings;

// std::regex recurses per character; longer inputs only test its stack.
constexpr std::size_t kMaxInput = 400;

void print(const char* title, const FlagSettings& settings) {
  std::fprintf(stderr, "%s:\n", title);
  for (const auto& [name, value] : settings) std::fprintf(stderr, "  [%s] = [%s]\n", name.c_str(), value.c_str());
}

void checkQuoted(const std::string& value) {
  const auto mine = qorin::Debug::detail::quotedText(value);
  const auto reference = qorin::testing::regexQuotedText(value);
  if (mine.has_value() != reference.has_value() || (mine && std::string(*mine) != *reference)) {
    std::fprintf(stderr, "quoted text differs for [%s]\n", value.c_str());
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const FlagSettings mine = qorin::Debug::detail::parseFlagSettings(text);
  const FlagSettings reference = qorin::testing::regexFlagSettings(text);
  if (mine != reference) {
    print("matcher", mine);
    print("std::regex", reference);
    std::abort();
  }
  for (const auto& [name, value] : reference) checkQuoted(value);
  checkQuoted(text);
  return 0;
}
