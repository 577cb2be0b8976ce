// Windows only: the wide command line and the main module's file name.
#include "env/command_line_os.h"

#include "platform/win32_api.h"

#include <qorin/text.h>

#include <shellapi.h>

#include <stdexcept>

namespace qorin::detail {

bool os_command_line_arguments(std::vector<std::string>* arguments) {
  int count = 0;
  LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr) return false;
  const win32::UniqueLocalMemory release_split{wide};
  arguments->clear();
  for (int i = 0; i < count; ++i) arguments->push_back(toKString(std::wstring(wide[i])));
  return true;
}

std::string os_executable_file_name() {
  // A long path can exceed MAX_PATH; the call cuts the name to fit and says
  // so only through the length, so grow until the name fits.
  constexpr size_t kLimitBytes = 1000000;
  std::wstring buffer(MAX_PATH, L'\0');
  while (buffer.size() * sizeof(wchar_t) <= kLimitBytes) {
    const DWORD length = ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0) throw std::runtime_error("GetModuleFileNameW failed");
    if (length < buffer.size()) {
      buffer.resize(length);
      return toKString(buffer);
    }
    buffer.resize(buffer.size() * 2);
  }
  throw std::runtime_error("The executable's file name is longer than 1000000 bytes");
}

}  // namespace qorin::detail
