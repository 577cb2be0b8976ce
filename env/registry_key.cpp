#include <qorin/env.h>

#include "env/registry_os.h"

#include <qorin/debug.h>
#include <qorin/text.h>

#include <cstring>
#include <utility>

namespace qorin {

namespace registry = detail::registry;

RegistryError::RegistryError(const std::string& message)
    : std::runtime_error(message), MoreInfoForException(message) {}
RegistryError::~RegistryError() = default;

KeyNotFound::KeyNotFound(const std::string& message) : RegistryError(message) {}
KeyNotFound::~KeyNotFound() = default;

ValueNotFound::ValueNotFound(const std::string& message) : RegistryError(message) {}
ValueNotFound::~ValueNotFound() = default;

namespace {

const char* root_name(RegistryRoot root) {
  return root == RegistryRoot::local_machine ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER";
}

// The system's text without the line break it usually ends with.
std::string system_text(unsigned long code) {
  std::string text = get_system_error_string(code);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) text.pop_back();
  return text;
}

std::string value_subject(const std::string& name, const std::string& key) {
  return "\"" + name + "\" in " + key;
}

registry::Value read_value(registry::Key key, const std::string& name, const std::string& full_path) {
  registry::Value value;
  const unsigned long code = registry::query_value(key, name, &value);
  if (code == registry::kNotFound) {
    throw ValueNotFound("Registry value \"" + name + "\" not found in " + full_path);
  }
  if (code != registry::kSuccess) {
    throw RegistryError("Cannot read registry value " + value_subject(name, full_path) + ": " + system_text(code));
  }
  return value;
}

std::vector<std::string> list(registry::Key key, registry::Names kind, const std::string& full_path) {
  std::vector<std::string> names;
  const unsigned long code = registry::list_names(key, kind, &names);
  if (code != registry::kSuccess) {
    throw RegistryError("Cannot list registry key " + full_path + ": " + system_text(code));
  }
  return names;
}

}  // namespace

RegistryKey::RegistryKey(RegistryRoot root, const std::string& path)
    : full_path_(std::string(root_name(root)) + "\\" + path) {
  const unsigned long code = registry::open_key(root, path, &key_);
  if (code == registry::kNoRegistry) {
    throw KeyNotFound("Registry key not found: " + full_path_ + " (there is no registry on this platform)");
  }
  if (code == registry::kNotFound) throw KeyNotFound("Registry key not found: " + full_path_);
  if (code != registry::kSuccess) {
    throw RegistryError("Cannot open registry key " + full_path_ + ": " + system_text(code));
  }
}

RegistryKey::~RegistryKey() { registry::close_key(key_); }

RegistryKey::RegistryKey(RegistryKey&& other) noexcept
    : key_(std::exchange(other.key_, nullptr)), full_path_(std::move(other.full_path_)) {}

RegistryKey& RegistryKey::operator=(RegistryKey&& other) noexcept {
  if (this != &other) {
    registry::close_key(key_);
    key_ = std::exchange(other.key_, nullptr);
    full_path_ = std::move(other.full_path_);
  }
  return *this;
}

std::string RegistryKey::get_string(const std::string& name) const {
  const registry::Value value = read_value(key_, name, full_path_);
  if (value.type != registry::kString && value.type != registry::kExpandString) {
    throw RegistryError("Registry value " + value_subject(name, full_path_) + " is not a string");
  }
  return toKString(registry::value_text(value));
}

std::uint32_t RegistryKey::get_dword(const std::string& name) const {
  const registry::Value value = read_value(key_, name, full_path_);
  std::uint32_t number = 0;
  if (value.type != registry::kDword || value.bytes.size() != sizeof number) {
    throw RegistryError("Registry value " + value_subject(name, full_path_) + " is not a DWORD");
  }
  std::memcpy(&number, value.bytes.data(), sizeof number);
  return number;
}

std::vector<std::string> RegistryKey::value_names() const {
  return list(key_, registry::Names::values, full_path_);
}

std::vector<std::string> RegistryKey::subkey_names() const {
  return list(key_, registry::Names::subkeys, full_path_);
}

}  // namespace qorin
