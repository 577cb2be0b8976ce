// The hand-written _QDX_DEBUG_FLAGS matcher, two ways:
// - against std::regex with the grammar's three patterns, for inputs short
//   enough for its one stack frame per character: any difference in names,
//   value texts, skipped entries or where reading ends is a crash;
// - for inputs up to 1 MB, the long inputs that broke the regex, that the
//   work is linear: a bounded number of steps a byte for the input, for the
//   input written twice, and for a short input repeated to some 16 KB.
#include "debug/flags/flag_settings_parser.h"
#include "fuzz/regex_flag_settings.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using qorin::Debug::detail::FlagSettings;
using qorin::Debug::detail::parseFlagSettings;

constexpr std::size_t kMaxInput = 1 << 20;
constexpr std::size_t kMaxRegexInput = 400;
constexpr std::size_t kRepeatedSize = 1 << 14;

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

void checkAgainstRegex(const std::string& text) {
  const FlagSettings mine = parseFlagSettings(text);
  const FlagSettings reference = qorin::testing::regexFlagSettings(text);
  if (mine != reference) {
    print("matcher", mine);
    print("std::regex", reference);
    std::abort();
  }
  for (const auto& [name, value] : reference) checkQuoted(value);
  checkQuoted(text);
}

std::size_t steps(const std::string& text) {
  std::size_t count = 0;
  parseFlagSettings(text, &count);
  return count;
}

// A linear matcher looks at each byte a bounded number of times: the
// line-break search, the blank, name and number scans, one search for each
// kind of quote, the comma search and the looks that end each scan: ten at
// most (random search reaches a little over four). The bound holds for the
// input, for the input written twice (where a quote opened in the first
// copy may change how the whole second copy is read) and for a short input
// repeated to 16 KB, where a quadratic matcher takes thousands of steps a
// byte.
constexpr std::size_t kStepsPerByte = 10;

void checkLinear(const std::string& text) {
  for (const std::string& input : {text, text + text}) {
    const std::size_t taken = steps(input);
    if (taken > kStepsPerByte * input.size() + 64) {
      std::fprintf(stderr, "%zu steps for %zu bytes\n", taken, input.size());
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (size <= kMaxRegexInput) checkAgainstRegex(text);
  checkLinear(text);
  if (size != 0 && size < kRepeatedSize / 2) {
    std::string repeated;
    while (repeated.size() < kRepeatedSize) repeated += text;
    checkLinear(repeated);
  }
  return 0;
}
