// Diagnostics: debug flags.
#pragma once

#include <qorin/export.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

// ---------------------------------------------------------------------------
// Debug flags
// ---------------------------------------------------------------------------

namespace qorin::Debug {

namespace detail {
class FlagManager;
}

// A named switch, optionally carrying a number or a text, that a user sets
// for a process through the environment variable _QDX_DEBUG_FLAGS: a
// comma-separated list of entries
//   NAME             set, numeric, value 1
//   NAME=number      digits, signs, '.', 'e' or 'E' only
//   NAME="text"      or 'text'; the text may hold commas
// with blanks allowed around names, '=' and commas. A malformed entry is
// skipped up to the next comma; a later entry for a name replaces an earlier
// one. Names are matched case-sensitively, deliberately: "logfile=2" does not
// set LOGFILE and is reported as unused.
//
// Code declares a flag as a function-local static returned by an accessor,
// so it exists from first use to exit:
//   Flag& logFileFlag() { static Flag flag("LOGFILE"); return flag; }
// The first flag constructed in a process reads the variable; later changes
// to it take effect only through reinitializeFlags.
//
// Example (_QDX_DEBUG_FLAGS=FOO=2.5e1,BAR='a,b',baz,BAD=x,FOO2):
//   FOO:  isNumeric() => true, asNumber() => 25, asString() => "25"
//   BAR:  isString() => true, asString() => "a,b", asNumber() => 0
//   FOO2: asNumber() => 1            BAD: isSet() => false (entry skipped)
//
// Thread safety: every accessor takes the flag's own mutex, except isSet(),
// which reads an atomic copy of the set state. The registry's mutex is taken
// before any flag's mutex, never the other way round.
class QORIN_EXPORT Flag {
 public:
  // Registers the flag and applies the variable's setting for its name.
  // Throws std::runtime_error `Duplicate debug flag name: "NAME"` when a
  // flag of that name exists; the new flag is then not registered.
  explicit Flag(const char* name);
  ~Flag();
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

  // Inline: flags are asked in hot loops.
  bool isSet() const { return setCopy_.load(std::memory_order_acquire); }
  // Sets or clears the set state, keeping the value; returns the previous
  // state.
  // Example: a numeric flag holding 3: enable(false) => true, isNumeric() => false;
  //          enable(true) => false, asNumber() => 3
  bool enable(bool on);
  // Not set, not numeric, no value.
  void clear();
  bool isNumeric() const;
  bool isString() const;

  // 0 when not set; the number; or the text's leading number (atof).
  // Example: "12ab" => 12, "ab" => 0
  double asNumber() const;
  double numericValue() const;
  // asNumber() truncated toward zero (clamped to the int range).
  // Example: 2.9 => 2, -2.9 => -2
  int asInteger() const;
  // "" when not set; a number written with "%.15g"; or the text.
  // Example: 0.1 => "0.1", 1e20 => "1e+20"
  std::string asString() const;
  const std::string stringValue() const;

  void setNumericValue(double value);
  void setStringValue(const std::string& value);
  void setStringValue(const char* value);

  const std::string& name() const;

  // Number of registered flags, read without locking.
  static std::uint64_t flagCount();
  // Reads _QDX_DEBUG_FLAGS again and applies it to every flag; a flag whose
  // name is not in the variable is cleared, even when the program set it.
  // With reportUnused, the names of settings that match no flag go to
  // standard error:
  //   "***** Unused flags:\n    logfile\n\n"
  static void reinitializeFlags(bool reportUnused);
  // Writes the settings and every flag's state to standard error:
  //   "\n***** FlagManager settings:\n"
  //   "    \"FOO\" -> \"2.5e1\"\n"
  //   "\n***** Existing flags:\n"
  //   "    \"FOO\":\n        is SET\n        is numeric (25)\n"
  //   "    \"BAR\":\n        is NOT set\n"
  //   "\n"
  // in the maps' own order.
  static void debugDump();

 protected:
  const std::string& nameNoLocks() const;

 private:
  friend class detail::FlagManager;

  // The twins of the public operations; the caller holds mutex_.
  void clearInternal();
  void setNumericValueInternal(double value);
  void setStringValueInternal(const std::string& value);
  void setSetInternal(bool on);
  std::string asStringInternal() const;

  const std::string name_;
  mutable std::mutex mutex_;
  bool set_ = false;
  bool numeric_ = false;
  double numericValue_ = 0;
  std::string stringValue_;
  // A lock costs far more than the load that answers isSet(); the setters
  // keep this copy in step with set_ under mutex_.
  std::atomic<bool> setCopy_{false};
};

// printf into a string of any length; never truncates.
// Throws std::runtime_error when the format cannot be applied.
//
// Example:
//   formatString("%s=%.15g", "x", 0.1) => "x=0.1"
QORIN_EXPORT std::string formatString(const char* format, ...);

}  // namespace qorin::Debug
