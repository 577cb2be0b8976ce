#include "debug/log/standard_descriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace qorin::Debug::detail {

void occupyStandardDescriptors() {
  for (int fd = 0; fd <= 2; ++fd) {
    if (::fcntl(fd, F_GETFD) >= 0 || errno != EBADF) continue;
    // open takes the lowest free number, which is this one unless another
    // thread opened something meanwhile.
    const int opened = ::open("/dev/null", O_RDWR);
    if (opened >= 0 && opened != fd) {
      ::dup2(opened, fd);
      ::close(opened);
    }
  }
}

}  // namespace qorin::Debug::detail
