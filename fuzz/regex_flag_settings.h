// The debug-flag grammar read the way it has always been described: with
// std::regex and three ECMAScript patterns. The reference that the
// hand-written matcher (debug/flag_settings_parser.h) is compared with.
// std::regex recurses once per character: keep inputs to a few thousand
// characters.
#pragma once

// GCC 12 misfires -Wmaybe-uninitialized inside libstdc++'s regex compiler
// under the sanitizers; the reference must build warning-free there too.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <optional>
#include <regex>
#include <string>
#include <unordered_map>

namespace qorin::testing {

inline std::unordered_map<std::string, std::string> regexFlagSettings(const std::string& text) {
  static const std::regex entry(R"(^\s*([a-z0-9_]+)(\s*=\s*([-+0-9.e]+|"[^"]*"|'[^']*'))?\s*(,\s*(.*))?$)",
                                std::regex::ECMAScript | std::regex::icase);
  static const std::regex skip(R"(^([^,]*),(.+)$)", std::regex::ECMAScript);
  std::unordered_map<std::string, std::string> settings;
  std::string rest = text;
  std::smatch match;
  while (!rest.empty()) {
    if (std::regex_search(rest, match, entry)) {
      const std::string value = match[3].str();
      settings[match[1].str()] = value.empty() ? "1" : value;
      rest = match[5].str();
    } else if (std::regex_search(rest, match, skip)) {
      rest = match[2].str();
    } else {
      break;
    }
  }
  return settings;
}

inline std::optional<std::string> regexQuotedText(const std::string& value) {
  static const std::regex quoted(R"((["'])(.*)\1)", std::regex::ECMAScript);
  std::smatch match;
  if (!std::regex_match(value, match, quoted)) return std::nullopt;
  return match[2].str();
}

}  // namespace qorin::testing
