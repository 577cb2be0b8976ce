// A program's stream cut into log lines the way the library logs the
// streams it intercepts: a line ends at its line feed, which stays;
// carriage returns are dropped (a progress bar's redraws make one line);
// a line longer than Debug::MAX_LINE_LENGTH goes out in pieces of that
// length.
//
// Example:
//   StreamLines lines;
//   lines.add("a\r\nb", show);   // show("a\n")
//   lines.add("c\n", show);      // show("bc\n")
//   lines.finish(show);          // nothing: no line is unfinished
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qorin::tool {

class StreamLines {
 public:
  using LineSink = std::function<void(std::string_view line)>;

  // Hands each line that `bytes` completes to `sink`.
  void add(std::string_view bytes, const LineSink& sink);
  // Hands over the unfinished last line, a line feed added.
  void finish(const LineSink& sink);

 private:
  void appendWithoutCarriageReturns(std::string_view piece, const LineSink& sink);

  std::string partial_;
};

}  // namespace qorin::tool
