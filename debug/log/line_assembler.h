// Cuts the bytes of one intercepted stream into log lines: a line ends with
// its line feed, carriage returns are dropped, any other byte (NUL, invalid
// UTF-8) is kept, and a line that reaches MAX_LINE_LENGTH bytes is let go as
// it is.
//
// Example (limit 4):
//   feed("ab\r\ncdefg")  => delivers "ab\n", "cdef"; "g" waits for more
//   flush()              => delivers "g\n": an unfinished last line is ended
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace qorin::Debug::detail {

class LineAssembler {
 public:
  // A delivered line is valid only during the call.
  using Deliver = std::function<void(std::string_view line)>;
  explicit LineAssembler(std::size_t maxLength) : maxLength_(maxLength) { line_.reserve(maxLength + 1); }

  void feed(const char* data, std::size_t size, const Deliver& deliver);
  // Lets go of an unfinished last line, if any, with a line feed added so
  // that it never runs into the next log line.
  void flush(const Deliver& deliver);

 private:
  std::size_t maxLength_;
  std::string line_;
};

}  // namespace qorin::Debug::detail
