// Windows only: CreateProcessW with the tool's standard handles, which the
// child inherits.
#include "child_process.h"

#include "platform/win32_api.h"

#include <qorin/debug.h>
#include <qorin/text.h>

namespace qorin::tool {

namespace {

// One argument quoted for the command line the way CommandLineToArgvW and
// the C runtime split it again: backslashes count only before a quote.
std::wstring quoted(const std::wstring& argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) return argument;
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (wchar_t c : argument) {
    if (c == L'\\') {
      ++backslashes;
      continue;
    }
    text.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
    backslashes = 0;
    text += c;
  }
  text.append(backslashes * 2, L'\\');
  return text + L"\"";
}

}  // namespace

int runChildProcess(const std::vector<std::string>& arguments, std::string& error) {
  std::wstring commandLine;
  for (const std::string& argument : arguments) {
    if (!commandLine.empty()) commandLine += L' ';
    commandLine += quoted(toWString(argument));
  }
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
  startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process{};
  if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process)) {
    error = get_system_error_string(::GetLastError());
    while (!error.empty() && (error.back() == '\n' || error.back() == '\r')) error.pop_back();
    return -1;
  }
  win32::UniqueHandle processHandle(process.hProcess);
  win32::UniqueHandle threadHandle(process.hThread);
  DWORD code = 0;
  if (::WaitForSingleObject(process.hProcess, INFINITE) != WAIT_OBJECT_0 ||
      !::GetExitCodeProcess(process.hProcess, &code)) {
    error = get_system_error_string(::GetLastError());
    return -1;
  }
  return static_cast<int>(code);
}

}  // namespace qorin::tool
