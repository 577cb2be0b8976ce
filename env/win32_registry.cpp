// Windows only: the registry through its wide API.
#include "env/registry_os.h"

#include "platform/win32_api.h"

#include <qorin/text.h>

namespace qorin::detail::registry {

static_assert(kSuccess == ERROR_SUCCESS && kNotFound == ERROR_FILE_NOT_FOUND &&
              kNoRegistry == ERROR_CALL_NOT_IMPLEMENTED);
static_assert(kString == REG_SZ && kExpandString == REG_EXPAND_SZ && kDword == REG_DWORD);
static_assert(KEY_READ == 0x20019);

namespace {

HKEY handle(Key key) { return static_cast<HKEY>(key); }

HKEY root_handle(RegistryRoot root) {
  return root == RegistryRoot::local_machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

}  // namespace

unsigned long open_key(RegistryRoot root, const std::string& path, Key* key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(root_handle(root), toWString(path).c_str(), 0, KEY_READ, &opened);
  *key = status == ERROR_SUCCESS ? opened : nullptr;
  return static_cast<unsigned long>(status);
}

void close_key(Key key) {
  if (key != nullptr) ::RegCloseKey(handle(key));
}

unsigned long query_value(Key key, const std::string& name, Value* value) {
  // Most values fit; a longer one reports the bytes it needs.
  constexpr DWORD kFirstBuffer = 5000;
  const std::wstring wide_name = toWString(name);
  DWORD type = 0;
  DWORD size = kFirstBuffer;
  value->bytes.assign(size, 0);
  LSTATUS status =
      ::RegQueryValueExW(handle(key), wide_name.c_str(), nullptr, &type, value->bytes.data(), &size);
  if (status == ERROR_MORE_DATA) {
    size = (size + 1) * 2;
    value->bytes.assign(size, 0);
    status = ::RegQueryValueExW(handle(key), wide_name.c_str(), nullptr, &type, value->bytes.data(), &size);
  }
  if (status != ERROR_SUCCESS) return static_cast<unsigned long>(status);
  value->type = type;
  value->bytes.resize(size);
  return kSuccess;
}

unsigned long list_names(Key key, Names kind, std::vector<std::string>* names) {
  DWORD subkeys = 0, longest_subkey = 0, values = 0, longest_value = 0;
  LSTATUS status = ::RegQueryInfoKeyW(handle(key), nullptr, nullptr, nullptr, &subkeys, &longest_subkey,
                                      nullptr, &values, &longest_value, nullptr, nullptr, nullptr);
  if (status != ERROR_SUCCESS) return static_cast<unsigned long>(status);
  const bool want_values = kind == Names::values;
  const DWORD count = want_values ? values : subkeys;
  std::wstring buffer((want_values ? longest_value : longest_subkey) + 1, L'\0');
  names->clear();
  for (DWORD index = 0; index < count; ++index) {
    DWORD length = static_cast<DWORD>(buffer.size());
    status = want_values
                 ? ::RegEnumValueW(handle(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr)
                 : ::RegEnumKeyExW(handle(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) break;  // entries removed meanwhile
    if (status != ERROR_SUCCESS) return static_cast<unsigned long>(status);
    names->push_back(toKString(buffer.substr(0, length)));
  }
  return kSuccess;
}

}  // namespace qorin::detail::registry
