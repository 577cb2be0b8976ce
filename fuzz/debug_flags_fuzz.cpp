// The hand-written _QDX_DEBUG_FLAGS matcher, two ways:
// - against std::regex with the grammar's three patterns, for inputs short
//   enough for its one stack frame per character: any difference in names,
//   value texts, skipped entries or where reading ends is a crash;
// - for inputs up to 1 MB, the long inputs that broke the regex, that the
//   work is linear: the input written twice in a row takes at most about
//   twice the steps of the input once (plus a few looks a byte), and a
//   short input repeated to some 16 KB is held to the same rule.
#include "debug/flag_settings_parser.h"
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

// A quadratic matcher takes four times the steps for twice the text; a
// linear one at most twice, plus a few looks a byte: where the copies meet,
// a quote opened in the first copy may close in the second and change how
// the whole second copy is read.
void checkLinear(const std::string& text) {
  const std::size_t once = steps(text);
  const std::size_t twice = steps(text + text);
  if (twice > 2 * once + 2 * text.size() + 64) {
    std::fprintf(stderr, "%zu steps for %zu bytes, %zu for them twice\n", once, text.size(), twice);
    std::abort();
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
