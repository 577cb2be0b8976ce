// Windows only: CreateProcessW with two pipes, one reading thread each.
#include "child_process.h"

#include "platform/win32_api.h"

#include <qorin/debug.h>
#include <qorin/text.h>

#include <mutex>
#include <thread>

namespace qorin::tool {

namespace {

constexpr DWORD kChunkSize = 64 * 1024;

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

std::string lastErrorText() {
  std::string error = get_system_error_string(::GetLastError());
  while (!error.empty() && (error.back() == '\n' || error.back() == '\r')) error.pop_back();
  return error;
}

// Ctrl-C and Ctrl-Break reach every process of the console: the program
// decides what they mean, and the tool waits for it. A handler routine, not
// the ignoring flag, which the program would inherit.
BOOL WINAPI letProgramHandle(DWORD event) { return event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT; }

class ConsoleSignalsPass {
 public:
  ConsoleSignalsPass() { ::SetConsoleCtrlHandler(letProgramHandle, TRUE); }
  ~ConsoleSignalsPass() { ::SetConsoleCtrlHandler(letProgramHandle, FALSE); }
  ConsoleSignalsPass(const ConsoleSignalsPass&) = delete;
  ConsoleSignalsPass& operator=(const ConsoleSignalsPass&) = delete;
};

// A pipe whose write end only the program inherits.
struct Pipe {
  win32::UniqueHandle read;
  win32::UniqueHandle write;

  bool open() {
    SECURITY_ATTRIBUTES security{sizeof security, nullptr, TRUE};
    return ::CreatePipe(read.out(), write.out(), &security, 0) &&
           ::SetHandleInformation(read.get(), HANDLE_FLAG_INHERIT, 0);
  }
};

// Reads until every writer has closed the pipe (ERROR_BROKEN_PIPE) or the
// receiver gives it up.
void readToTheEnd(win32::UniqueHandle pipe, ChildStream stream, const ChildChunkReceiver& receive,
                  std::mutex& receiving) {
  std::string buffer(kChunkSize, '\0');
  DWORD count = 0;
  while (::ReadFile(pipe.get(), buffer.data(), kChunkSize, &count, nullptr) && count > 0) {
    std::lock_guard<std::mutex> lock(receiving);
    if (!receive(stream, std::string_view(buffer.data(), count))) return;
  }
}

}  // namespace

ChildResult runChildProcess(const std::vector<std::string>& arguments, const ChildChunkReceiver& receive) {
  ChildResult result;
  std::wstring commandLine;
  for (const std::string& argument : arguments) {
    if (!commandLine.empty()) commandLine += L' ';
    commandLine += quoted(toWString(argument));
  }
  Pipe output;
  Pipe error;
  if (!output.open() || !error.open()) {
    result.error = lastErrorText();
    return result;
  }
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = output.write.get();
  startup.hStdError = error.write.get();
  ConsoleSignalsPass signalsPass;
  PROCESS_INFORMATION process{};
  const BOOL created = ::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &startup, &process);
  if (!created) result.error = lastErrorText();
  // Only the program's copies may keep the pipes open now.
  output.write.reset();
  error.write.reset();
  if (!created) return result;
  win32::UniqueHandle processHandle(process.hProcess);
  win32::UniqueHandle threadHandle(process.hThread);
  result.started = true;
  std::mutex receiving;
  std::thread errorReader(readToTheEnd, std::move(error.read), ChildStream::error, std::cref(receive),
                          std::ref(receiving));
  readToTheEnd(std::move(output.read), ChildStream::output, receive, receiving);
  errorReader.join();
  DWORD code = 0;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &code);
  // Exception codes (0xC0000005, ...) too: the status is passed on whole.
  result.status = static_cast<int>(code);
  return result;
}

}  // namespace qorin::tool
