// The OS side of standard-stream interception: the process's standard
// output and standard error replaced by pipes whose read ends the logger's
// stream thread drains. One implementation per platform:
// posix_stream_pipes.cpp, win32_stream_pipes.cpp.
//
// Example:
//   StreamPipes pipes(true, STREAM_PIPE_SIZE);   // printf now writes into a pipe
//   pipes.waitForData();
//   long n = pipes.readWaiting(kStandardOutput, buffer, sizeof buffer);
//   pipes.writeSaved(kStandardOutput, buffer, n);  // to the old screen
//   pipes.restoreStandardStreams();               // printf writes where it did before
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace qorin::Debug::detail {

enum StandardStream : int { kStandardOutput = 0, kStandardError = 1 };

class StreamPipes {
 public:
  // Intercepts standard error, and standard output when asked: the C
  // streams become unbuffered, their descriptors (and on Windows the
  // standard handles) become the write ends of new pipes, inherited by
  // child processes; every other handle it makes (read ends, saved
  // streams) is created not inheritable. A C stream that has no descriptor
  // (Windows, a program started without standard handles) is given one.
  // Throws std::runtime_error "Can't create stderr redirection pipe" or
  // "Can't duplicate handle for stdout".
  StreamPipes(bool alsoStandardOutput, int pipeSize);
  // Closes the read ends and the saved streams; restore first.
  ~StreamPipes();
  StreamPipes(const StreamPipes&) = delete;
  StreamPipes& operator=(const StreamPipes&) = delete;

  bool intercepts(StandardStream stream) const;
  // Reads up to `size` of the bytes waiting in the stream's pipe without
  // blocking: the count, 0 when none wait (also once every writer has
  // gone), -1 when the pipe fails.
  long readWaiting(StandardStream stream, char* buffer, std::size_t size);
  // Blocks until a pipe may hold data or wake() is called; may return early.
  // Afterwards readWaiting looks only at the pipes found holding data, until
  // expectData().
  void waitForData();
  // The next readWaiting looks at every pipe: for a caller that must see
  // every byte written before now, whatever waitForData last found.
  void expectData();
  // Ends the current or the next waitForData. Any thread.
  void wake();

  // For a dying process: the stream thread announces that it found the
  // pipes empty, and the dying thread waits up to `milliseconds` for that
  // (true when it came). Both only read, write or wait, as a signal handler
  // may.
  void announceDrained();
  bool awaitDrained(int milliseconds);

  // Whether the stream in place before interception could be kept.
  bool savedValid(StandardStream stream) const;
  // One write of the text to the stream in place before interception.
  void writeSaved(StandardStream stream, const char* data, std::size_t size);
  // Puts the saved streams back as the process's standard streams; the
  // pipes then have no writers left in this process.
  void restoreStandardStreams();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Writes `text` to the standard error the program had before interception,
// or to its standard error when nothing is intercepted: the logging
// machinery reports its own failures there, never into the log it failed.
void writeDiagnostic(std::string_view text);

// Runs `hook` once when the process exits through exit() or the end of
// main, while its other threads still run. On Windows that is the C
// runtime's process-wide exit list: a DLL's own atexit list runs only after
// the system has ended every other thread, and a stream thread ended in the
// middle of a read loses what it read (or holds a lock forever). Elsewhere
// std::atexit.
void callAtProcessExit(void (*hook)());

}  // namespace qorin::Debug::detail
