#include "debug/flags/flag_manager.h"

#include <qorin/env.h>

#include <iostream>
#include <sstream>
#include <stdexcept>

namespace qorin::Debug::detail {

namespace {

constexpr const char* kVariable = "_QDX_DEBUG_FLAGS";

// Assembled first, written in one piece: another thread's output does not
// land inside the dump.
void writeToStandardError(const std::string& text) { std::cerr << text << std::flush; }

}  // namespace

FlagManager& FlagManager::instance() {
  static FlagManager* manager = new FlagManager;
  return *manager;
}

void FlagManager::registerFlag(Flag& flag) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!parsed_) {
    parsed_ = true;
    readVariableInternal(false);
  }
  const std::string& name = flag.nameNoLocks();
  if (flags_.count(name) != 0) {
    throw std::runtime_error(formatString("Duplicate debug flag name: \"%s\"", name.c_str()));
  }
  flags_.emplace(name, &flag);
  count_.store(flags_.size(), std::memory_order_relaxed);
  applyInternal(flag);
}

void FlagManager::unregisterFlag(const Flag& flag) {
  std::lock_guard<std::mutex> lock(mutex_);
  flags_.erase(flag.nameNoLocks());
  count_.store(flags_.size(), std::memory_order_relaxed);
}

void FlagManager::reinitialize(bool reportUnused) {
  std::lock_guard<std::mutex> lock(mutex_);
  readVariableInternal(reportUnused);
}

void FlagManager::readVariableInternal(bool reportUnused) {
  std::string text;
  getEnvKstringAllowEmpty(kVariable, &text);
  settings_ = parseFlagSettings(text);
  for (auto& [name, flag] : flags_) applyInternal(*flag);
  if (!reportUnused) return;
  std::string report;
  for (const auto& [name, value] : settings_) {
    if (flags_.count(name) != 0) continue;
    if (report.empty()) report = "***** Unused flags:\n";
    report += "    " + name + "\n";
  }
  if (!report.empty()) writeToStandardError(report + "\n");
}

void FlagManager::applyInternal(Flag& flag) const {
  const auto setting = settings_.find(flag.nameNoLocks());
  std::lock_guard<std::mutex> lock(flag.mutex_);
  if (setting == settings_.end()) {
    flag.clearInternal();
  } else if (const auto text = quotedText(setting->second)) {
    flag.setStringValueInternal(std::string(*text));
  } else {
    flag.setNumericValueInternal(leadingNumber(setting->second));
  }
}

void FlagManager::dump() {
  std::lock_guard<std::mutex> lock(mutex_);
  std::ostringstream out;
  out << "\n***** FlagManager settings:\n";
  for (const auto& [name, value] : settings_) out << "    \"" << name << "\" -> \"" << value << "\"\n";
  out << "\n***** Existing flags:\n";
  for (const auto& [name, flag] : flags_) {
    std::lock_guard<std::mutex> flagLock(flag->mutex_);
    out << "    \"" << name << "\":\n";
    out << (flag->set_ ? "        is SET\n" : "        is NOT set\n");
    if (!flag->set_) continue;
    if (flag->numeric_) {
      out << "        is numeric (" << numberText(flag->numericValue_, 6) << ")\n";
    } else {
      out << "        is String (" << flag->asStringInternal() << ")\n";
    }
  }
  out << "\n";
  writeToStandardError(out.str());
}

}  // namespace qorin::Debug::detail
