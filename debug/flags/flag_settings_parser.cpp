#include "debug/flags/flag_settings_parser.h"

#include "text/c_strtod.h"

#include <qorin/text.h>

#include <algorithm>

namespace qorin::Debug::detail {

namespace {

constexpr std::size_t npos = std::string_view::npos;

// The "C" locale's classes, which the patterns were always compiled with.
bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}
bool isNumberChar(char c) {
  return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

class Matcher {
 public:
  explicit Matcher(std::string_view text)
      : text_(text), lastLineBreak_(text.find_last_of("\r\n")), steps_(text.size()) {}

  std::size_t steps() const { return steps_; }

  FlagSettings run() {
    FlagSettings settings;
    std::size_t pos = 0;
    while (pos < text_.size()) {
      if (!matchEntry(pos, settings) && !matchSkip(pos)) break;
    }
    return settings;
  }

 private:
  std::size_t skipBlanks(std::size_t pos) const {
    while (pos < text_.size() && isBlank(look(pos))) ++pos;
    return pos;
  }

  // Whether '.' can run from `pos` to the end. Every rest is a suffix of the
  // text, so one look at the last line break answers for all of them.
  bool dotsReachEnd(std::size_t pos) const { return lastLineBreak_ == npos || lastLineBreak_ < pos; }

  // The end of the value starting at `pos`, or npos.
  std::size_t valueEnd(std::size_t pos) const {
    if (pos == text_.size()) return npos;
    const char first = text_[pos];
    if (isNumberChar(first)) {
      while (pos < text_.size() && isNumberChar(look(pos))) ++pos;
      return pos;
    }
    if (first != '"' && first != '\'') return npos;
    const std::size_t close = find(first, pos + 1);
    return close == npos ? npos : close + 1;
  }

  // The entry pattern: on a match records the setting and moves `pos` to the
  // rest (group 5).
  bool matchEntry(std::size_t& pos, FlagSettings& settings) const {
    const std::size_t nameStart = skipBlanks(pos);
    std::size_t at = nameStart;
    while (at < text_.size() && isNameChar(look(at))) ++at;
    if (at == nameStart) return false;
    const std::string_view name = text_.substr(nameStart, at - nameStart);
    std::string_view value = "1";
    at = skipBlanks(at);
    if (at < text_.size() && text_[at] == '=') {
      const std::size_t valueStart = skipBlanks(at + 1);
      const std::size_t end = valueEnd(valueStart);
      if (end == npos) return false;
      value = text_.substr(valueStart, end - valueStart);
      at = skipBlanks(end);
    }
    std::size_t rest = text_.size();
    if (at < text_.size()) {
      if (text_[at] != ',') return false;
      rest = skipBlanks(at + 1);
      if (!dotsReachEnd(rest)) return false;
    }
    settings[std::string(name)] = std::string(value);
    pos = rest;
    return true;
  }

  // The skip pattern: moves `pos` past the first comma when a non-empty rest
  // without line breaks follows it.
  bool matchSkip(std::size_t& pos) const {
    const std::size_t comma = find(',', pos);
    if (comma == npos || comma + 1 == text_.size() || !dotsReachEnd(comma + 1)) return false;
    pos = comma + 1;
    return true;
  }

  // Every character looked at counts as a step.
  char look(std::size_t pos) const {
    ++steps_;
    return text_[pos];
  }
  std::size_t find(char c, std::size_t from) const {
    const std::size_t found = text_.find(c, from);
    steps_ += (found == npos ? text_.size() : found + 1) - std::min(from, text_.size());
    return found;
  }

  std::string_view text_;
  std::size_t lastLineBreak_;
  mutable std::size_t steps_;
};

}  // namespace

FlagSettings parseFlagSettings(std::string_view text, std::size_t* steps) {
  Matcher matcher(text);
  FlagSettings settings = matcher.run();
  if (steps != nullptr) *steps = matcher.steps();
  return settings;
}

std::optional<std::string_view> quotedText(std::string_view value) {
  if (value.size() < 2) return std::nullopt;
  const char quote = value.front();
  if ((quote != '"' && quote != '\'') || value.back() != quote) return std::nullopt;
  const std::string_view inner = value.substr(1, value.size() - 2);
  if (inner.find_first_of("\r\n") != npos) return std::nullopt;
  return inner;
}

double leadingNumber(std::string_view text) {
  return qorin::detail::strtod_c(text.data(), text.data() + text.size()).value;
}

std::string numberText(double value, int precision) { return fromDouble(value, general, precision, 0); }

}  // namespace qorin::Debug::detail
