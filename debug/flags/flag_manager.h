// The process-wide registry of debug flags, named "FlagManager" in its
// output. Created on first use and never destroyed, so flags that are
// statics can unregister at exit in any order.
//
// Lock order: mutex_, then a flag's own mutex.
#pragma once

#include <qorin/debug.h>

#include "debug/flags/flag_settings_parser.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

namespace qorin::Debug::detail {

class FlagManager {
 public:
  static FlagManager& instance();

  // The first registration of the process reads the variable.
  void registerFlag(Flag& flag);
  void unregisterFlag(const Flag& flag);
  void reinitialize(bool reportUnused);
  void dump();
  std::uint64_t count() const { return count_.load(std::memory_order_relaxed); }

 private:
  FlagManager() = default;

  // The twins of the operations above; the caller holds mutex_.
  void readVariableInternal(bool reportUnused);
  void applyInternal(Flag& flag) const;

  std::mutex mutex_;
  bool parsed_ = false;
  FlagSettings settings_;
  std::unordered_map<std::string, Flag*> flags_;
  // flags_.size() for readers that take no lock.
  std::atomic<std::uint64_t> count_{0};
};

}  // namespace qorin::Debug::detail
