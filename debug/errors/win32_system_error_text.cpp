// Windows only: error texts from the system message table.
#include "debug/errors/system_error_text.h"

#include "platform/win32_api.h"

#include <utf8.h>

#include <iterator>

namespace qorin::detail {

std::string systemErrorText(unsigned long code) {
  wchar_t* buffer = nullptr;
  const DWORD length = ::FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
      // With ALLOCATE_BUFFER the system stores its buffer's address here.
      reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  const win32::UniqueLocalMemory owner{buffer};
  std::string text;
  // Throws utf8::invalid_utf16 on an unpaired surrogate.
  utf8::utf16to8(buffer, buffer + length, std::back_inserter(text));
  return text;
}

}  // namespace qorin::detail
