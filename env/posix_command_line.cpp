// POSIX only: the arguments come as given; the executable from the kernel.
#include "env/command_line_os.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace qorin::detail {

bool os_command_line_arguments(std::vector<std::string>*) { return false; }

std::string os_executable_file_name() {
  // readlink does not say whether it cut the name: grow until it fits.
  constexpr size_t kLimitBytes = 1000000;
  std::string buffer(256, '\0');
  while (buffer.size() <= kLimitBytes) {
    const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length < 0) {
      throw std::runtime_error(std::string("Cannot read /proc/self/exe: ") + std::strerror(errno));
    }
    if (static_cast<size_t>(length) < buffer.size()) {
      buffer.resize(static_cast<size_t>(length));
      return buffer;
    }
    buffer.resize(buffer.size() * 2);
  }
  throw std::runtime_error("The executable's file name is longer than 1000000 bytes");
}

}  // namespace qorin::detail
