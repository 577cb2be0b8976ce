// The registry calls of the environment subsystem (win32_registry.cpp,
// posix_registry.cpp). The registry is a Windows notion, so results are its
// error codes; where there is no registry, opening any key answers
// kNoRegistry.
#pragma once

#include <qorin/env.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace qorin::detail::registry {

using Key = void*;  // an HKEY

constexpr unsigned long kSuccess = 0;
constexpr unsigned long kNotFound = 2;      // ERROR_FILE_NOT_FOUND
constexpr unsigned long kNoRegistry = 120;  // ERROR_CALL_NOT_IMPLEMENTED

// Value types.
constexpr unsigned long kString = 1;        // REG_SZ
constexpr unsigned long kExpandString = 2;  // REG_EXPAND_SZ
constexpr unsigned long kDword = 4;         // REG_DWORD

struct Value {
  unsigned long type = 0;
  std::vector<unsigned char> bytes;
};

// Opens `path` (backslash-separated) below `root` for reading (KEY_READ,
// access mask 0x20019).
unsigned long open_key(RegistryRoot root, const std::string& path, Key* key);
void close_key(Key key);

// Reads a value of any type: first into 5000 bytes, and when that is too
// small (ERROR_MORE_DATA) once more into (needed + 1) * 2 bytes.
unsigned long query_value(Key key, const std::string& name, Value* value);

enum class Names { values, subkeys };
unsigned long list_names(Key key, Names kind, std::vector<std::string>* names);

// The value's bytes read as UTF-16 text up to the first NUL (string values
// usually carry one, but need not).
//
// Example:
//   bytes 61 00 62 00 00 00 => u"ab"
inline std::u16string value_text(const Value& value) {
  std::u16string text(value.bytes.size() / 2, u'\0');
  std::memcpy(text.data(), value.bytes.data(), text.size() * 2);
  text.resize(std::min(text.find(u'\0'), text.size()));
  return text;
}

}  // namespace qorin::detail::registry
