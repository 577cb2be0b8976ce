#include <qorin/debug.h>

#include "debug/flags/flag_manager.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace qorin::Debug {

using Lock = std::lock_guard<std::mutex>;

Flag::Flag(const char* name) : name_(name) { detail::FlagManager::instance().registerFlag(*this); }

Flag::~Flag() { detail::FlagManager::instance().unregisterFlag(*this); }

bool Flag::enable(bool on) {
  Lock lock(mutex_);
  const bool previous = set_;
  setSetInternal(on);
  return previous;
}

void Flag::clear() {
  Lock lock(mutex_);
  clearInternal();
}

bool Flag::isNumeric() const {
  Lock lock(mutex_);
  return set_ && numeric_;
}

bool Flag::isString() const {
  Lock lock(mutex_);
  return set_ && !numeric_;
}

double Flag::asNumber() const {
  Lock lock(mutex_);
  if (!set_) return 0.0;
  return numeric_ ? numericValue_ : detail::leadingNumber(stringValue_);
}

double Flag::numericValue() const { return asNumber(); }

int Flag::asInteger() const {
  const double number = asNumber();
  if (std::isnan(number)) return 0;
  // Converting a double beyond the int range is undefined.
  return static_cast<int>(std::clamp(number, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX)));
}

std::string Flag::asString() const {
  Lock lock(mutex_);
  return asStringInternal();
}

const std::string Flag::stringValue() const { return asString(); }

void Flag::setNumericValue(double value) {
  Lock lock(mutex_);
  setNumericValueInternal(value);
}

void Flag::setStringValue(const std::string& value) {
  Lock lock(mutex_);
  setStringValueInternal(value);
}

void Flag::setStringValue(const char* value) { setStringValue(std::string(value)); }

const std::string& Flag::name() const {
  Lock lock(mutex_);
  return name_;
}

const std::string& Flag::nameNoLocks() const { return name_; }

std::uint64_t Flag::flagCount() { return detail::FlagManager::instance().count(); }

void Flag::reinitializeFlags(bool reportUnused) { detail::FlagManager::instance().reinitialize(reportUnused); }

void Flag::debugDump() { detail::FlagManager::instance().dump(); }

void Flag::clearInternal() {
  setSetInternal(false);
  numeric_ = false;
  numericValue_ = 0;
  stringValue_.clear();
}

void Flag::setNumericValueInternal(double value) {
  setSetInternal(true);
  numeric_ = true;
  numericValue_ = value;
  stringValue_.clear();
}

void Flag::setStringValueInternal(const std::string& value) {
  setSetInternal(true);
  numeric_ = false;
  numericValue_ = 0;
  stringValue_ = value;
}

void Flag::setSetInternal(bool on) {
  set_ = on;
  setCopy_.store(on, std::memory_order_release);
}

std::string Flag::asStringInternal() const {
  if (!set_) return {};
  return numeric_ ? detail::numberText(numericValue_, 15) : stringValue_;
}

}  // namespace qorin::Debug
