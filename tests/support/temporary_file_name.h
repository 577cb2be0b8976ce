// A file name in a fresh scratch directory, removed with the directory:
// tests under Wine share the temporary folder with other runs.
//
// Example:
//   TemporaryFileName log("mux");   // log.name() => ".../mux-3f9c0a17d2b4e681/file"
#pragma once

#include <qorin/fs.h>

#include <fstream>
#include <iterator>
#include <string>

namespace qorin::testing {

class TemporaryFileName {
 public:
  explicit TemporaryFileName(const std::string& tag) : directory_(tag) {}
  std::string name() const { return (Path(directory_.path()) /= Path("file")).string(); }
  // The file's whole content; "" when it does not exist.
  std::string read() const {
    std::ifstream file(Path(name()).fs_path(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }

 private:
  TemporaryDirectory directory_;
};

}  // namespace qorin::testing
