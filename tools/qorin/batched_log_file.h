// The tool's log file: lines handed to it by the multiplexer wait until
// writeBatch(), so that the lines of one chunk read from a program, or of a
// multi-line message, reach the file with one append however many they are
// (another process sharing the file never lands among them, and a busy
// program costs one system call a chunk, not one a line).
//
// Example:
//   auto log = std::make_shared<BatchedLogFile>("run.log");
//   multiplexer.addOutput(log);
//   multiplexer.logGenericMsg(STD_MSG, "a\n");  multiplexer.logGenericMsg(STD_MSG, "b\n");
//   log->writeBatch();                    // run.log gains "s:a\ns:b\n" in one write
//   log->failure()                        // "" or `cannot write log file "run.log": No space left on device`
#pragma once

#include <qorin/debug.h>

#include <string>

namespace qorin::tool {

class BatchedLogFile : public Debug::OutputHandlerFile {
 public:
  using OutputHandlerFile::OutputHandlerFile;

  // The multiplexer's flush after each message: held back for writeBatch.
  void flushLines() override {}
  void writeBatch() { OutputHandlerFile::flushLines(); }

  // "" while the file is open and every write went through; else the
  // tool's message: `cannot open log file "NAME": REASON` or
  // `cannot write log file "NAME": REASON`.
  std::string failure();
};

}  // namespace qorin::tool
