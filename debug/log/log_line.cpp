#include "debug/log/log_line.h"

#include "debug/log/log_file.h"
#include "platform/thread_object.h"

#include <atomic>

namespace qorin::Debug::detail {

void appendDigits(std::string& out, unsigned value, int width) {
  char digits[16];
  for (int i = width - 1; i >= 0; --i) {
    digits[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
  out.append(digits, static_cast<std::size_t>(width));
}

bool formatLocalSeconds(long long seconds, std::string& out) {
  std::tm local{};
  if (!localTime(seconds, local)) return false;
  out.clear();
  appendDigits(out, static_cast<unsigned>(local.tm_year + 1900), 4);
  out += '-';
  appendDigits(out, static_cast<unsigned>(local.tm_mon + 1), 2);
  out += '-';
  appendDigits(out, static_cast<unsigned>(local.tm_mday), 2);
  out += ' ';
  appendDigits(out, static_cast<unsigned>(local.tm_hour), 2);
  out += ':';
  appendDigits(out, static_cast<unsigned>(local.tm_min), 2);
  out += ':';
  appendDigits(out, static_cast<unsigned>(local.tm_sec), 2);
  return true;
}

const std::string& threadIdentifier() {
  static std::atomic<int> counter{0};
  std::string& identifier = qorin::detail::threadObject<std::string>();
  if (identifier.empty()) identifier = "T" + std::to_string(counter.fetch_add(1) + 1);
  return identifier;
}

}  // namespace qorin::Debug::detail
