// Cuts the bytes of one intercepted stream into log lines: a line ends with
// its line feed, carriage returns are dropped, and a line that reaches
// MAX_LINE_LENGTH bytes is let go as it is.
//
// Example (limit 4):
//   feed("ab\r\ncdefg")  => delivers "ab\n", "cdef"; "g" waits for more
//
// Note: feed() writes into `data`: a line that lies whole in it is handed
// over in place, its end marked with a zero byte, so `data` needs one byte
// of room past `size`.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace qorin::Debug::detail {

class LineAssembler {
 public:
  using Deliver = std::function<void(const char* line)>;
  explicit LineAssembler(std::size_t maxLength) : maxLength_(maxLength) { line_.reserve(maxLength); }

  void feed(char* data, std::size_t size, const Deliver& deliver);
  // Lets go of an unfinished last line, if any.
  void flush(const Deliver& deliver);

 private:
  std::size_t maxLength_;
  std::string line_;
};

}  // namespace qorin::Debug::detail
