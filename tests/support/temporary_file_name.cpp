#include "support/temporary_file_name.h"

#include <fstream>
#include <iterator>
#include <unistd.h>

namespace qorin::testing {

int currentProcessId() { return static_cast<int>(::getpid()); }

std::string TemporaryFileName::read() const {
  std::ifstream file(path_, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace qorin::testing
