// Windows only: the environment is UTF-16; names and values cross over
// through the library's conversions.
#include "env/environment_os.h"

#include "platform/win32_api.h"

#include <qorin/text.h>

#include <cstdlib>
#include <new>

namespace qorin::detail {

bool os_read_environment(const std::string& name, std::string* value) {
  // Most values fit; a longer one reports the size it needs.
  constexpr DWORD kFirstBuffer = 5000;
  const std::wstring wide_name = toWString(name);
  std::wstring buffer(kFirstBuffer, L'\0');
  DWORD length = ::GetEnvironmentVariableW(wide_name.c_str(), buffer.data(), kFirstBuffer);
  // 0 means absent or empty; Windows does not tell them apart.
  if (length == 0) return false;
  if (length > kFirstBuffer) {
    const DWORD needed = length;
    buffer.assign(needed, L'\0');
    length = ::GetEnvironmentVariableW(wide_name.c_str(), buffer.data(), needed);
    // The variable changed in between: not taken.
    if (length == 0 || length > needed) return false;
  }
  buffer.resize(length);
  *value = toKString(buffer);
  return true;
}

void os_write_environment(const std::string& name, const std::string& value) {
  if (::_wputenv_s(toWString(name).c_str(), toWString(value).c_str()) != 0) throw std::bad_alloc();
}

}  // namespace qorin::detail
