// The lines of one input, read in blocks: memory stays flat whatever the
// input's length, and a line longer than the limit is reported and skipped
// without being held.
//
// Example (limit 4): "ab\r\ncdefgh\nij" => line "ab", too_long, line "ij", end
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace qorin::tool {

class InputLines {
 public:
  enum Result { line, too_long, end, read_error };

  InputLines(std::FILE* file, std::size_t max_line_bytes);

  // The next line, without its "\n" or "\r\n", into *text. After read_error,
  // error_number() holds the errno of the failed read.
  Result next(std::string* text);
  int error_number() const { return error_number_; }

 private:
  bool refill();

  std::FILE* file_;
  std::size_t max_line_bytes_;
  std::vector<char> block_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool at_end_ = false;
  int error_number_ = 0;
};

}  // namespace qorin::tool
