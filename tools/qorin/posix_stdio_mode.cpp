// POSIX only: the standard streams are bytes already; a closed one is
// replaced by /dev/null, where writes go nowhere, as they would have.
#include "stdio_mode.h"

#include <fcntl.h>
#include <unistd.h>

namespace qorin::tool {

void use_binary_stdio() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    if (::fcntl(fd, F_GETFD) < 0) ::open("/dev/null", fd == STDIN_FILENO ? O_RDONLY : O_WRONLY);
  }
}

}  // namespace qorin::tool
