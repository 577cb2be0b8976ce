// Diagnostics: exceptions that carry context, the reporters that print them,
// debug flags set from the environment variable _QDX_DEBUG_FLAGS, the log
// multiplexer and the logger service that can intercept standard streams.
//
// Exceptions carry a chain of context messages ("outer: inner"); catch blocks
// add context with rethrowMessage and top-level code hands the exception in
// flight to the active reporter, which by default prints it on standard
// error. Nothing else here prints, except Flag::debugDump and the unused-flag
// list. Reporters and flags may be used from any thread; each takes its own
// locks. All strings are UTF-8.
//
// Start with rethrowMessage and reportException; for switches that a user
// sets without a rebuild, a function-local static Flag.
//
// Example:
//   try {
//     try { save(design); } catch (...) { qorin::rethrowMessage("Saving design"); }
//   } catch (...) {
//     qorin::reportException("", "");   // stderr: "Error: Saving design: disk full\n\n"
//   }
//
//   // _QDX_DEBUG_FLAGS=TRACE,LIMIT=20
//   qorin::Debug::Flag& limitFlag() { static qorin::Debug::Flag flag("LIMIT"); return flag; }
//   limitFlag().isSet() => true    limitFlag().asInteger() => 20
#pragma once

#include <qorin/export.h>

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// MinGW's libstdc++ selects the C99 printf, which GCC calls gnu_printf there;
// plain printf would mean the Microsoft runtime's rules.
#if defined(__MINGW32__)
#define QORIN_PRINTF_FORMAT(format_index, first_arg) __attribute__((format(gnu_printf, format_index, first_arg)))
#else
#define QORIN_PRINTF_FORMAT(format_index, first_arg) __attribute__((format(printf, format_index, first_arg)))
#endif

namespace qorin {

// ===========================================================================
// Exceptions and reporters
// ===========================================================================

// Joins an outer context message to an existing text as "message: existing".
// When `existing` already begins with `message` it is returned unchanged, so
// the same context is never prefixed twice. Note: an empty `existing` still
// gets the separator; callers rely on the dangling ": ".
//
// Example:
//   addInfo("b", "abc") => "b: abc"     addInfo("a", "abc") => "abc"
//   addInfo("a", "")    => "a: "        addInfo("", "x")    => "x"
QORIN_EXPORT std::string addInfo(const std::string& message, const std::string& existing);

// The report text: `before` and a line feed when `before` is not empty, the
// exception text, then a line feed and `after` when `after` is not empty.
//
// Example:
//   errorMessages("E", "", "")   => "E"
//   errorMessages("E", "B", "A") => "B\nE\nA"
QORIN_EXPORT std::string errorMessages(const std::string& exceptionText, const std::string& before,
                                       const std::string& after);

// A mix-in carrying context messages beside an exception; always a second
// base next to a standard exception (it is not a std::exception itself).
// messages() holds the innermost text first, outer context after it;
// fullMessage() is all of them joined outermost first with addInfo.
//
// Example:
//   MoreInfoForException e("outer", "inner");
//   e.fullMessage() => "outer: inner"    e.getMessages() => {"inner", "outer"}
//   e.addMessage("top");  e.fullMessage() => "top: outer: inner"
class QORIN_EXPORT MoreInfoForException {
 public:
  explicit MoreInfoForException(const std::string& message);
  MoreInfoForException(const std::string& message, const std::string& inner);
  MoreInfoForException(const MoreInfoForException&) = default;
  MoreInfoForException& operator=(const MoreInfoForException&) = default;
  virtual ~MoreInfoForException();

  // Adds outer context. Virtual so that exception types built on this one
  // can keep their own view of the message in step.
  virtual void addMessage(const std::string& message);

  const std::vector<std::string>& getMessages() const { return messages_; }
  const std::string& fullMessage() const { return fullMessage_; }

 private:
  std::vector<std::string> messages_;
  std::string fullMessage_;
};

// The report text of the exception in flight (see reportException for how
// it is found), framed by errorMessages. Only inside a catch block.
QORIN_EXPORT std::string getExceptionMessage(const std::string& before, const std::string& after);

// Adds `message` as outer context to the exception in flight and throws it
// on. Only inside a catch block.
// - A MoreInfoForException gets addMessage and the same object is re-thrown.
// - A standard exception is first offered to the handlers (newest first;
//   one that recognises it may throw instead), then thrown anew as an object
//   that is still caught as its most derived standard type (its what() is
//   unchanged) and also as MoreInfoForException.
// - Anything else is offered to the handlers, then re-thrown unchanged; the
//   message is lost.
//
// Example:
//   catch (...) { rethrowMessage("m"); }   // in flight: std::out_of_range("idx")
//   => throws an object caught as std::out_of_range with what() "idx" and as
//      MoreInfoForException with fullMessage() "m: idx"
[[noreturn]] QORIN_EXPORT void rethrowMessage(const std::string& message);

class ThreadReporterStorage;

// A sink for the exception in flight. A reporter is active only once
// installed, process-wide (setGlobalReporter) or for the calling thread
// (setThreadReporter); the newest installation wins and destroying a
// reporter restores the one before it. Reports go to the calling thread's
// newest thread reporter, else the newest global one, else a default
// printfException.
//
// The slots run with the reporter lists' lock held: a slot must not install,
// remove or destroy reporters. An exception thrown by a slot propagates to
// the caller of reportException.
//
// A derived reporter that other threads may report to calls uninstall()
// first in its destructor: the base destructor runs after the derived part
// is gone, and a report reaching the reporter in between would find only
// the abstract base.
//
// Example:
//   struct LogReporter : qorin::ExceptionReporterBase {
//     ~LogReporter() override { uninstall(); }
//     ...
//   };
class QORIN_EXPORT ExceptionReporterBase {
 public:
  // Calls uninstall(), too late for a reporter that other threads use.
  virtual ~ExceptionReporterBase();
  virtual void reportException(const std::string& before, const std::string& after) = 0;
  virtual void exceptionAsWarning(const std::string& before, const std::string& after) = 0;

  ExceptionReporterBase() = default;
  // A copy is not installed anywhere; assignment leaves both installations alone.
  ExceptionReporterBase(const ExceptionReporterBase&);
  ExceptionReporterBase& operator=(const ExceptionReporterBase&);

  // Installs (moving it to the newest place if installed already) or removes
  // this reporter process-wide.
  void setGlobalReporter(bool on);
  // Installs or removes this reporter for the calling thread only. Installing
  // one already installed for this thread does not move it.
  void setThreadReporter(bool on);

 protected:
  // Removes this reporter from the global list and from every thread's list,
  // after waiting for any of its slots that is running; no report reaches it
  // afterwards. Safe to call more than once.
  void uninstall();

 private:
  friend class ThreadReporterStorage;
  // A thread that had this reporter installed has ended.
  void threadStorageDeleted(ThreadReporterStorage* storage);
  void detachFromThreadInternal(ThreadReporterStorage* storage);

  // The threads this reporter is installed for.
  std::vector<ThreadReporterStorage*> threadStorages_;
};

// The default reporter: writes "Error: %s\n\n" (or "Warning: %s\n\n") with the
// report text to standard error, nothing once reporter_set_testing_active()
// has been called. A default-constructed printfException installs itself as
// the global reporter.
//
// Example: inside a catch of std::runtime_error("disk full"),
//   reportException("Saving design", "") writes "Error: Saving design\ndisk full\n\n"
class QORIN_EXPORT printfException : public ExceptionReporterBase {
 public:
  ~printfException() override;
  void reportException(const std::string& before, const std::string& after) override;
  void exceptionAsWarning(const std::string& before, const std::string& after) override;

  printfException();
  printfException(const printfException&) = default;
  printfException(printfException&&) = default;
  printfException& operator=(const printfException&) = default;
  printfException& operator=(printfException&&) = default;

  // Whether a report ever found no reporter installed and fell back to the
  // process's default printfException. Never returns to false.
  static bool is_default_printf_reporter_active();
};

// Teaches rethrowMessage and the reporters about exception types that are
// not standard ones. A handler inspects the exception in flight itself
// (try { throw; } catch (const MyError& e) { ... } catch (...) {}).
// Construction registers the handler as the newest; destruction removes it.
// The slots run with the handler list locked: a slot must not create or
// destroy handlers.
class QORIN_EXPORT ExceptionHandlerBase {
 public:
  virtual ~ExceptionHandlerBase();
  // Called by rethrowMessage; throw the exception with `message` added to
  // take over, return to let the next handler and the default rules act.
  virtual void handleRethrow(const std::string& message) = 0;
  // The report text of the exception in flight, or "" when not recognised.
  virtual std::string describeCurrentException() = 0;

  ExceptionHandlerBase();
  // The copy is not registered.
  ExceptionHandlerBase(const ExceptionHandlerBase&);
  ExceptionHandlerBase& operator=(const ExceptionHandlerBase&) = default;
};

// Reports the exception in flight through the active reporter, as an error
// or as a warning. Only inside a catch block. The text of the exception is
// a MoreInfoForException's fullMessage(); for other exceptions the first
// non-empty describeCurrentException() of the handlers (newest first), else
// what() for standard exceptions and "Unknown exception encountered." for
// anything else.
QORIN_EXPORT void reportException(const std::string& before, const std::string& after);
QORIN_EXPORT void exceptionAsWarning(const std::string& before, const std::string& after);

// Reports `message` as a std::runtime_error through the active reporter.
//
// Example:
//   reportError("bad pin") with the default reporter writes "Error: bad pin\n\n"
QORIN_EXPORT void reportError(const std::string& message);
QORIN_EXPORT void reportWarning(const std::string& message);

// The operating system's text for an error code, UTF-8, untrimmed.
// Windows: the system message table's text for a Win32 error code (neutral
// language), usually ending in "\r\n". POSIX: the strerror_r text for the
// errno value `code`.
//
// Example:
//   get_system_error_string(2) => "The system cannot find the file specified.\r\n"  (Windows)
//   get_system_error_string(2) => "No such file or directory"                        (glibc)
QORIN_EXPORT std::string get_system_error_string(unsigned long code);

// Silences printfException for the rest of the process; reports still go
// through the reporter chain. For test programs.
QORIN_EXPORT void reporter_set_testing_active();

}  // namespace qorin

// ===========================================================================
// Debug flags
// ===========================================================================

namespace qorin::Debug {

namespace detail {
class FlagManager;
}

// A named switch, optionally carrying a number or a text, that a user sets
// for a process through the environment variable _QDX_DEBUG_FLAGS: a
// comma-separated list of entries
//   NAME             set, numeric, value 1
//   NAME=number      digits, signs, '.', 'e' or 'E' only
//   NAME="text"      or 'text'; the text may hold commas
// with blanks allowed around names, '=' and commas. A malformed entry is
// skipped up to the next comma; a later entry for a name replaces an earlier
// one. Names are matched case-sensitively, deliberately: "logfile=2" does not
// set LOGFILE and is reported as unused.
//
// Code declares a flag as a function-local static returned by an accessor,
// so it exists from first use to exit:
//   Flag& logFileFlag() { static Flag flag("LOGFILE"); return flag; }
// The first flag constructed in a process reads the variable; later changes
// to it take effect only through reinitializeFlags.
//
// Example (_QDX_DEBUG_FLAGS=FOO=2.5e1,BAR='a,b',baz,BAD=x,FOO2):
//   FOO:  isNumeric() => true, asNumber() => 25, asString() => "25"
//   BAR:  isString() => true, asString() => "a,b", asNumber() => 0
//   FOO2: asNumber() => 1            BAD: isSet() => false (entry skipped)
//
// Thread safety: every accessor takes the flag's own mutex, except isSet(),
// which reads an atomic copy of the set state. The registry's mutex is taken
// before any flag's mutex, never the other way round.
class QORIN_EXPORT Flag {
 public:
  // Registers the flag and applies the variable's setting for its name.
  // Throws std::runtime_error `Duplicate debug flag name: "NAME"` when a
  // flag of that name exists; the new flag is then not registered.
  explicit Flag(const char* name);
  ~Flag();
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

  // Inline: flags are asked in hot loops.
  bool isSet() const { return setCopy_.load(std::memory_order_acquire); }
  // Sets or clears the set state, keeping the value; returns the previous
  // state.
  // Example: a numeric flag holding 3: enable(false) => true, isNumeric() => false;
  //          enable(true) => false, asNumber() => 3
  bool enable(bool on);
  // Not set, not numeric, no value.
  void clear();
  bool isNumeric() const;
  bool isString() const;

  // 0 when not set; the number; or the text's leading number, read as atof
  // reads it in the "C" locale whatever the process's locale.
  // Example: "12ab" => 12, "ab" => 0
  double asNumber() const;
  double numericValue() const;
  // asNumber() truncated toward zero (clamped to the int range).
  // Example: 2.9 => 2, -2.9 => -2
  int asInteger() const;
  // "" when not set; a number written as "%.15g" writes it in the "C"
  // locale; or the text.
  // Example: 0.1 => "0.1", 1e20 => "1e+20"
  std::string asString() const;
  const std::string stringValue() const;

  void setNumericValue(double value);
  void setStringValue(const std::string& value);
  void setStringValue(const char* value);

  const std::string& name() const;

  // Number of registered flags, read without locking.
  static std::uint64_t flagCount();
  // Reads _QDX_DEBUG_FLAGS again and applies it to every flag; a flag whose
  // name is not in the variable is cleared, even when the program set it.
  // With reportUnused, the names of settings that match no flag go to
  // standard error:
  //   "***** Unused flags:\n    logfile\n\n"
  static void reinitializeFlags(bool reportUnused);
  // Writes the settings and every flag's state to standard error:
  //   "\n***** FlagManager settings:\n"
  //   "    \"FOO\" -> \"2.5e1\"\n"
  //   "\n***** Existing flags:\n"
  //   "    \"FOO\":\n        is SET\n        is numeric (25)\n"
  //   "    \"BAR\":\n        is NOT set\n"
  //   "\n"
  // in the maps' own order.
  static void debugDump();

 protected:
  const std::string& nameNoLocks() const;

 private:
  friend class detail::FlagManager;

  // The twins of the public operations; the caller holds mutex_.
  void clearInternal();
  void setNumericValueInternal(double value);
  void setStringValueInternal(const std::string& value);
  void setSetInternal(bool on);
  std::string asStringInternal() const;

  const std::string name_;
  mutable std::mutex mutex_;
  bool set_ = false;
  bool numeric_ = false;
  double numericValue_ = 0;
  std::string stringValue_;
  // A lock costs far more than the load that answers isSet(); the setters
  // keep this copy in step with set_ under mutex_.
  std::atomic<bool> setCopy_{false};
};

// printf into a string of any length; never truncates. The compiler checks
// the arguments against the format.
// Throws std::runtime_error when the format cannot be applied.
//
// Example:
//   formatString("%s=%.15g", "x", 0.1) => "x=0.1"
QORIN_EXPORT std::string formatString(const char* format, ...) QORIN_PRINTF_FORMAT(1, 2);

}  // namespace qorin::Debug

// ===========================================================================
// Log multiplexer and output handlers
// ===========================================================================

namespace qorin::Debug {

namespace detail {
class LineAssembler;
}

// Where a message came from; the letter is what a log file shows before ':'.
enum MessageType : int {
  STD_MSG = 0,  // standard output, 's'
  ERR_MSG = 1,  // standard error, 'e'
  LOG_MSG = 2,  // the program's own log messages, 'l'
};

// One output of a Multiplexer. Handlers are called with the multiplexer's
// lock held, one message at a time; a handler must not call back into it.
// What a handler throws is caught: the other handlers still get the line,
// and the failure is reported once on standard error (the one the program
// had before interception), "Log output failed: <what>".
class QORIN_EXPORT OutputHandler {
 public:
  virtual bool valid() { return true; }
  // `line` is the decorated line, `message` the text as logged; both carry
  // their own line feed when the caller gave one. A message holding a NUL
  // byte reaches this form cut at the NUL: take ByteOutputHandler for every
  // byte.
  virtual void logMsg(MessageType type, const char* line, const char* message) = 0;
  virtual bool close() { return true; }
  virtual ~OutputHandler();
};

// An output that takes each line as a byte range, any byte included (NUL,
// invalid UTF-8): the multiplexer calls logLine instead of logMsg. Lines
// read together from an intercepted stream arrive one by one and then
// flushLines() once, so a handler may write them with one system call.
//
// Example:
//   class Capture : public ByteOutputHandler {
//     void logLine(MessageType, std::string_view line, std::string_view) override { text.append(line); }
//     std::string text;
//   };
//   mux.logGenericMsg(STD_MSG, std::string_view("a\0b\n", 4));   // text == "a\0b\n"
class QORIN_EXPORT ByteOutputHandler : public OutputHandler {
 public:
  virtual void logLine(MessageType type, std::string_view line, std::string_view message) = 0;
  // After the last line of a message or of a chunk read from a stream.
  virtual void flushLines() {}
  // Forwards the C strings to logLine.
  void logMsg(MessageType type, const char* line, const char* message) override;
};

// Appends lines to a file: each message, or the lines of one chunk read
// from an intercepted stream, with one low-level append, so that lines of
// several processes sharing the file never tear and nothing waits in a
// buffer when the program dies. The file is opened for appending, created
// with permission 0644, and is not inherited by child processes. Lines are
// written as they come, any byte included: on Windows too a line ends with
// a bare line feed, and each append holds a lock on the file so that
// processes sharing it never overwrite each other's lines.
//
// Example:
//   OutputHandlerFile file("run.log");
//   file.logMsg(STD_MSG, "hello\n", "hello\n");   // run.log gains "s:hello\n"
//   with FILENOTYPEPREFIX set                       // run.log gains "hello\n"
class QORIN_EXPORT OutputHandlerFile : public ByteOutputHandler {
 public:
  explicit OutputHandlerFile(const std::string& filename);
  ~OutputHandlerFile() override;
  OutputHandlerFile(const OutputHandlerFile&) = delete;
  OutputHandlerFile& operator=(const OutputHandlerFile&) = delete;

  bool valid() override;
  void logLine(MessageType type, std::string_view line, std::string_view message) override;
  void flushLines() override;
  bool close() override;

  // Closes the current file and opens `name` (UTF-8); false when it cannot
  // be opened, which leaves the handler closed and openError() telling why.
  bool reopen(const char* name);
  std::string getFilename();

  // Why the last open failed; empty after a successful one.
  //   Example: OutputHandlerFile("no/such/dir/x").openError().message()
  //            => "No such file or directory"
  std::error_code openError();
  // The first failed write since the file was opened (a full disk, a file
  // system gone), empty when none failed. The failure is also reported once
  // on standard error, the one the program had before interception:
  //   Can't write log file: "run.log": No space left on device
  // Later lines are still tried, and a later failure is not reported again.
  std::error_code writeError();

 private:
  void closeInternal();
  void noteWriteFailure(int errorNumber);

  std::mutex mutex_;
  std::string filename_;
  int fd_ = -1;
  std::error_code openError_;
  std::error_code writeError_;
  std::string pending_;  // lines not yet written, for the next flushLines
};

// Decorates each message into a log line and hands it to every output, in
// registration order:
//   [stamp ": "] [prefix ": "] ["T<n>: "] message
// where the stamp is local time "YYYY-MM-DD HH:MM:SS.uuuuuu" and T<n> numbers
// threads in the order they first log (the first is T1).
//
// A new multiplexer is enabled and has no outputs. Disabled, it writes each
// message undecorated to standard output (STD_MSG) or standard error
// (ERR_MSG, LOG_MSG) instead of to its outputs.
//
// Example:
//   Multiplexer mux;
//   mux.addFileOutput("run.log");
//   mux.setPrefix("sim");  mux.enableThreadIDs(true);
//   mux.logLogMsg("start\n");                       // run.log: "l:sim: T1: start\n"
//   mux.enableTimestamps(true);
//   mux.stdLogMsgArgs("%d\n", 5);   // "s:2024-03-05 14:07:09.004211: sim: T1: 5\n"
//
// Note: a formatted message of 10000 characters or more loses its last
// character (callers have long relied on that exact cut); a format the
// runtime rejects logs "<FORMATTING ERROR>\n".
//
// Thread safety: every operation takes the multiplexer's one mutex, which is
// also held while a line is delivered to all outputs.
class QORIN_EXPORT Multiplexer {
 public:
  Multiplexer();
  ~Multiplexer();
  Multiplexer(const Multiplexer&) = delete;
  Multiplexer& operator=(const Multiplexer&) = delete;

  // A handler is registered at most once.
  void addOutput(const std::shared_ptr<OutputHandler>& handler);
  void removeOutput(const std::shared_ptr<OutputHandler>& handler);
  void removeAllOutputs();

  // Replaces the file output by one writing to `name`; nothing for "".
  // Throws std::runtime_error `Can't open log file: "NAME": REASON` and keeps
  // the previous file output when the file cannot be opened.
  //   Example: addFileOutput("no/such/dir/x") throws
  //            Can't open log file: "no/such/dir/x": No such file or directory
  void addFileOutput(const std::string& name);
  void removeFileOutput();
  bool fileOutputExists();
  bool anOutputExists();

  // Each returns the previous setting.
  bool enable(bool on);
  bool enabled();
  bool enableTimestamps(bool on);
  bool enableThreadIDs(bool on);
  std::string setPrefix(const std::string& prefix);

  // Opens `fileName`, or when it is null or "" the file named by the flag
  // LOGFILE, unless a file output exists; a disabled multiplexer first drops
  // its outputs. The flag ADDTHREADID turns thread identifiers on (it never
  // turns off what enableThreadIDs turned on).
  //
  // A file that cannot be opened is tried once: initialize returns false,
  // reports `Can't open log file: "NAME": REASON` on standard error (the one
  // the program had before interception) and the multiplexer drops every
  // later message until an initialize with a file that opens. Otherwise true.
  bool initialize(const char* fileName = nullptr);
  bool hasBeenInitialized();

  void logGenericMsg(MessageType type, const char* message);
  // The message as it is, any byte included (NUL, invalid UTF-8).
  void logGenericMsg(MessageType type, std::string_view message);
  void logGenericMsgArgs(MessageType type, const char* format, ...);
  void logGenericMsgArgsArgs(MessageType type, const char* format, va_list args);
  void stdLogMsg(const char* message);
  void errLogMsg(const char* message);
  void logLogMsg(const char* message);
  void stdLogMsgArgs(const char* format, ...);
  void errLogMsgArgs(const char* format, ...);
  void logLogMsgArgs(const char* format, ...);

 private:
  friend class Logger;
  friend class StreamLineLogger;

  void addOutputInternal(const std::shared_ptr<OutputHandler>& handler);
  void removeOutputInternal(const std::shared_ptr<OutputHandler>& handler);
  void removeFileOutputInternal();
  bool initializeInternal(const char* fileName);
  void doInitializationIfNecessary();
  bool activeForMessages();
  void logMsgArgsInternal(MessageType type, const char* format, va_list args);
  void logMsgInternal(MessageType type, std::string_view message);

  // The time a line is stamped with, read before the lock is taken.
  struct Stamp {
    bool wanted = false;
    long long seconds = 0;
    unsigned micros = 0;
  };
  Stamp readClock() const;
  // With the mutex held: decorates one line and hands it to every output
  // but `except` (the intercepted streams' mirror, which has shown the bytes
  // already); then, once per message or chunk, flushOutputsInternal.
  void deliverLineInternal(MessageType type, std::string_view message, const Stamp& stamp,
                           const OutputHandler* except = nullptr);
  void flushOutputsInternal();
  // Feeds `bytes` to `lines` (or, with `finish`, lets go of its unfinished
  // line) and delivers the lines it completes under one hold of the lock,
  // to every output but `except`, then flushes them once. Nothing is
  // delivered while disabled.
  void logLines(MessageType type, detail::LineAssembler& lines, std::string_view bytes, bool finish,
                const OutputHandler* except);

  struct Output {
    std::shared_ptr<OutputHandler> handler;
    ByteOutputHandler* bytes;  // the same handler when it takes byte ranges
    bool failureReported;
  };
  void reportOutputFailure(Output& output);

  std::mutex mutex_;
  bool enabled_ = true;
  bool active_ = true;
  // Atomic: the clock is read before the lock is taken.
  std::atomic<bool> timestamps_{false};
  bool threadIDs_ = false;
  bool initialized_ = false;
  std::string prefix_;
  std::vector<Output> outputs_;
  std::shared_ptr<OutputHandlerFile> fileOutput_;
  // Local time changes its text once a second: the formatted seconds are
  // kept for the lines of the same second.
  long long stampSeconds_ = -1;
  std::string stampText_;
  std::string lineBuffer_;
};

// Logs a byte stream line by line, as the Logger logs the streams it
// intercepts: a line ends at its line feed, which stays; carriage returns are
// dropped; any other byte is kept; a line reaching MAX_LINE_LENGTH bytes goes
// in pieces; the lines that one piece of bytes completes reach each output
// with one flush (one append to a log file). For a program that reads
// another program's output itself. Not thread-safe: one writer per object.
//
// Example:
//   StreamLineLogger errors(mux, ERR_MSG);
//   errors.log("50%\rdone\npart");   // run.log gains "e:50%done\n"
//   errors.finish();                 // run.log gains "e:part\n"
class QORIN_EXPORT StreamLineLogger {
 public:
  StreamLineLogger(Multiplexer& multiplexer, MessageType type);
  ~StreamLineLogger();
  StreamLineLogger(const StreamLineLogger&) = delete;
  StreamLineLogger& operator=(const StreamLineLogger&) = delete;

  void log(std::string_view bytes);
  // Logs the unfinished last line, if any, with a line feed added.
  void finish();

 private:
  Multiplexer& multiplexer_;
  MessageType type_;
  std::unique_ptr<detail::LineAssembler> lines_;
};

// The logger's flags (see Flag), each created on first call.
QORIN_EXPORT Flag& qorinCoreLogFileNameFlag();          // LOGFILE: the file when none is given
QORIN_EXPORT Flag& qorinCoreLogStreamDoublePipeFlag();  // STREAMDOUBLEPIPE: stderr lines keep ERR_MSG
QORIN_EXPORT Flag& qorinCoreLogInterceptStreamsFlag();  // INTERCEPTSTREAMS: 0 stderr only, else both
QORIN_EXPORT Flag& qorinCoreLogFileNoTypePrefixFlag();  // FILENOTYPEPREFIX: no "s:" in files
QORIN_EXPORT Flag& qorinCoreLogAddThreadIDFlag();       // ADDTHREADID: T<n> in every line
QORIN_EXPORT Flag& qorinCoreLogNoMirrorStreamsFlag();   // NOMIRRORSTREAMS: no copy to the screen
QORIN_EXPORT Flag& qorinCoreLogAlsoMirrorLogsFlag();    // ALSOMIRRORLOGS: LOG_MSG to the screen too
QORIN_EXPORT Flag& qorinCoreLogDebugUnusedFlag();       // DEBUGUNUSED: for the application

// ===========================================================================
// Logger service and standard-stream interception
// ===========================================================================

// The longest line the stream reader assembles; longer lines arrive in
// pieces of this length.
QORIN_EXPORT extern const int MAX_LINE_LENGTH;  // 10240
// The buffer asked for each interception pipe.
QORIN_EXPORT extern const int STREAM_PIPE_SIZE;  // 32768

// The process's logger: one Multiplexer, and optionally the interception of
// the process's own standard output and standard error. Intercepted, both
// descriptors (and the Windows standard handles) become pipes that a stream
// thread reads; every line becomes a message (STD_MSG; stderr lines too
// unless STREAMDOUBLEPIPE is set) and, with mirroring, the bytes are also
// shown as they are read, unchanged, on the streams that were there before
// (STD_MSG bytes on the old standard output, ERR_MSG bytes on the old
// standard error). Child processes inherit the pipes, so their output is
// logged too; nothing else the logger opens is inherited.
//
// Lines end at a line feed, which stays; carriage returns are dropped from
// the log (not from the screen); any other byte is kept; a line longer than
// MAX_LINE_LENGTH arrives in pieces; each stream has its own line, so the two
// never mix; an unfinished last line is logged at shutdown with a line feed
// added. Nothing is read while the logger is paused (it starts paused:
// writers block once a pipe is full).
//
// A program started with standard descriptors closed (`prog >&- 2>&-`, or
// on Windows without standard handles) gets the null device on them before
// the logger opens its file or pipes, so that neither takes their place; on
// Windows, C streams without a descriptor are also given one while
// intercepted, so that printf is logged. A child made by fork leaves the pipes to its parent:
// its exit logs nothing twice. A process that dies (abort, an uncaught
// exception, SIGSEGV, SIGBUS, SIGFPE, SIGILL; on Windows an unhandled
// exception) first waits up to three seconds for the stream thread to log
// what is in the pipes, then the handlers that were there before run and it
// dies as it would have; a crash on the stream thread itself, or while
// paused, logs nothing more.
//
// Example:
//   Logger::initialize("run.log", false);        // no interception
//   Logger::redirectStandardOutputs(true, true);  // both streams, mirrored
//   Logger::start();
//   std::printf("a\r\n");                         // run.log: "s:a\n"; screen: "a\n"
//   Logger::waitForStreamSync();                  // everything written so far is logged
//   Logger::shutdown();                           // the old streams are back
//
// On normal exit the logger delivers what is still in the pipes and shuts
// itself down if the program did not.
class QORIN_EXPORT Logger {
 public:
  static Logger& getInstance();
  Multiplexer& multiplexer() { return multiplexer_; }

  // Initializes the multiplexer (see Multiplexer::initialize) and, when
  // `withStreams` and the flag INTERCEPTSTREAMS is set, intercepts standard
  // error, and standard output too unless the flag's number is 0, mirrored
  // unless NOMIRRORSTREAMS is set, and starts reading. False when the
  // multiplexer could not be initialized, and when interception is asked for
  // after shutdown (it does not start again; the streams stay as they are).
  static bool initialize(const char* fileName = nullptr, bool withStreams = true);
  static bool isInitialized();

  // Intercepts standard error, and standard output when asked, if not done
  // yet; with `mirror`, intercepted lines also go to the old streams. The
  // reader stays paused until start(). Throws std::runtime_error
  // "Can't create stderr redirection pipe" or "Can't duplicate handle for stdout".
  static void redirectStandardOutputs(bool alsoStandardOutput, bool mirror);
  static void start();
  static void pause();
  static void unpause();
  static void setPaused(bool paused);
  // Returns once the reader runs; at once when nothing is intercepted.
  static void waitForUnpaused();
  // Returns once every byte written to the intercepted streams before the
  // call has been delivered (an unfinished last line waits for its line
  // feed); at once when paused, shutting down or not intercepting.
  static void waitForStreamSync();
  // Delivers what is left, puts the old standard streams back and ends the
  // stream thread. Only the first call acts.
  static void shutdown();

  static bool enableTimestamps(bool on);
  static bool enableThreadIDs(bool on);
  static std::string setPrefix(const std::string& prefix);

  static void stdMsg(const char* message);
  static void errMsg(const char* message);
  static void logMsg(const char* message);
  static void stdMsgArgs(const char* format, ...);
  static void errMsgArgs(const char* format, ...);
  static void logMsgArgs(const char* format, ...);

  static bool fileOutputInUse();
  // Whether the streams are intercepted (a stream thread exists).
  static bool threadingAlreadyInitialized();

  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;

 private:
  Logger();
  ~Logger();

  // The twins of the public operations expect the logger's API mutex held.
  static bool initializeInternal(const char* fileName, bool withStreams);
  static void setupThread(bool alsoStandardOutput);
  static void setupThreadHandlersInternal(bool alsoStandardOutput, bool mirror);
  static void setPausedInternal(bool paused);
  static void syncAndFlushThread();
  static void shutdownInternal();
  static void shutdownStreamThread();
  static void inStreamThreadHandler();
  // Reads and delivers what waits in the pipes, standard error first, until
  // both are empty; with `untilPaused` it stops early once paused.
  enum class Drain { empty, paused, failed };
  static Drain drainStreams(bool untilPaused);
  // Shows one chunk read from a stream (0 output, 1 error) on the old
  // screen and logs its complete lines.
  static void deliverChunk(int stream, const char* data, std::size_t size);
  // Lets go of unfinished last lines.
  static void flushStreamLines();

  Multiplexer multiplexer_;
};

}  // namespace qorin::Debug
