#include <qorin/env.h>

#include "env/product_defaults.h"
#include "env/registry_os.h"
#include "platform/thread_object.h"

#include <qorin/text.h>

#include <algorithm>
#include <mutex>

namespace qorin {

namespace {

// Opened at most once per process and never released: lookups may come from
// other objects' destructors at exit.
struct RegistryFallback {
  std::mutex mutex;
  bool tried = false;
  bool available = false;  // the installation's key is open
  detail::registry::Key key = nullptr;
};

RegistryFallback& registry_fallback() {
  static RegistryFallback* fallback = new RegistryFallback;
  return *fallback;
}

// The handle never changes afterwards, so lookups read it without the lock.
void open_once(RegistryFallback& fallback) {
  std::lock_guard<std::mutex> lock(fallback.mutex);
  if (fallback.tried) return;
  fallback.tried = true;
  // Named after the built-in identity, whatever the host program renamed.
  const std::string path = "SOFTWARE\\Ambrosyn\\" + detail::default_product_name() + "\\" +
                           detail::default_product_version() + "\\qoenv";
  fallback.available = detail::registry::open_key(RegistryRoot::local_machine, path, &fallback.key) ==
                       detail::registry::kSuccess;
}

}  // namespace

bool getenv_from_registry_only(const std::string& name, std::string* value) {
  RegistryFallback& fallback = registry_fallback();
  open_once(fallback);
  if (!fallback.available) return false;
  detail::registry::Value raw;
  if (detail::registry::query_value(fallback.key, name, &raw) != detail::registry::kSuccess) return false;
  std::u16string text = detail::registry::value_text(raw);
  // Only the first line of a value is the setting.
  text.resize(std::min(text.find_first_of(u"\r\n"), text.size()));
  *value = toKString(text);
  return true;
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
