// A file name in the system's temporary folder, unique to this process and
// call, removed (if it was created) when the object ends: tests under Wine
// share that folder with other runs.
//
// Example:
//   TemporaryFileName log("mux");   // log.name() => ".../qorin-mux-4711-1.log"
#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>

namespace qorin::testing {

int currentProcessId();

class TemporaryFileName {
 public:
  explicit TemporaryFileName(const std::string& tag) {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("qorin-" + tag + "-" + std::to_string(currentProcessId()) + "-" + std::to_string(++counter) + ".log");
  }
  ~TemporaryFileName() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  TemporaryFileName(const TemporaryFileName&) = delete;
  TemporaryFileName& operator=(const TemporaryFileName&) = delete;

  std::string name() const { return path_.u8string(); }
  // The file's whole content; "" when it does not exist.
  std::string read() const;

 private:
  std::filesystem::path path_;
};

}  // namespace qorin::testing
