#include <qorin/env.h>

#include "env/product_defaults.h"
#include "env/registry_os.h"
#include "platform/thread_object.h"

#include <qorin/text.h>

#include <algorithm>
#include <mutex>

namespace qorin {

namespace {

struct Slot {
  detail::registry::Key key = nullptr;
  bool open = false;
};

// Opened at most once per process and never released: lookups may come from
// other objects' destructors at exit.
struct RegistryFallback {
  std::mutex mutex;
  bool tried = false;
  bool available = false;
  // Only the first slot is ever opened (the installation's key); lookups walk
  // both so that a second key needs no change to them.
  Slot slots[2];
};

RegistryFallback& registry_fallback() {
  static RegistryFallback* fallback = new RegistryFallback;
  return *fallback;
}

// The handles never change afterwards, so lookups read them without the lock.
void open_once(RegistryFallback& fallback) {
  std::lock_guard<std::mutex> lock(fallback.mutex);
  if (fallback.tried) return;
  fallback.tried = true;
  // Named after the built-in identity, whatever the host program renamed.
  const std::string path = "SOFTWARE\\Ambrosyn\\" + detail::default_product_name() + "\\" +
                           detail::default_product_version() + "\\qoenv";
  Slot& first = fallback.slots[0];
  first.open = detail::registry::open_key(RegistryRoot::local_machine, path, &first.key) ==
               detail::registry::kSuccess;
  fallback.available = first.open;
  fallback.slots[1].open = false;
}

}  // namespace

bool getenv_from_registry_only(const std::string& name, std::string* value) {
  RegistryFallback& fallback = registry_fallback();
  open_once(fallback);
  if (!fallback.available) return false;
  for (const Slot& slot : fallback.slots) {
    if (!slot.open) continue;
    detail::registry::Value raw;
    if (detail::registry::query_value(slot.key, name, &raw) != detail::registry::kSuccess) continue;
    std::u16string text = detail::registry::value_text(raw);
    // Only the first line of a value is the setting.
    text.resize(std::min(text.find_first_of(u"\r\n"), text.size()));
    *value = toKString(text);
    return true;
  }
  return false;
}

bool getenv_check_registry_kstring_allow_empty(const std::string& name, std::string* value) {
  return getEnvKstringAllowEmpty(name, value) || getenv_from_registry_only(name, value);
}

std::string getenv_check_registry_kstring(const std::string& name) {
  std::string value;
  getenv_check_registry_kstring_allow_empty(name, &value);
  return value;
}

const char* getenv_check_registry_legacy(const char* name) {
  std::string& last_result = detail::threadObject<std::string>();
  std::string value;
  if (!getenv_check_registry_kstring_allow_empty(name, &value)) return nullptr;
  last_result = std::move(value);
  return last_result.c_str();
}

}  // namespace qorin
