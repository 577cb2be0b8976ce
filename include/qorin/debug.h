// Diagnostics: exceptions and reporters, debug flags.
//
// Exceptions carry a chain of context messages ("outer: inner"); catch blocks
// add context with rethrowMessage and top-level code hands the exception in
// flight to the active reporter:
//
//   try {
//     try { save(design); } catch (...) { qorin::rethrowMessage("Saving design"); }
//   } catch (...) {
//     qorin::reportException("", "");   // stderr: "Error: Saving design: disk full\n\n"
//   }
//
// All strings are UTF-8.
#pragma once

#include <qorin/export.h>

#include <string>
#include <vector>

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
class QORIN_EXPORT ExceptionReporterBase {
 public:
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
