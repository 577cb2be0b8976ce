// Windows only: descriptors 0 to 2 without a handle (a program started
// without standard handles) get the null device.
#include "debug/log/standard_descriptors.h"

#include <cstdint>
#include <fcntl.h>
#include <io.h>

namespace qorin::Debug::detail {

void occupyStandardDescriptors() {
  for (int fd = 0; fd <= 2; ++fd) {
    // -1: closed; -2: the runtime's mark for "no standard handle".
    const intptr_t handle = ::_get_osfhandle(fd);
    if (handle != -1 && handle != -2) continue;
    const int nul = ::_open("NUL", fd == 0 ? _O_RDONLY : _O_WRONLY);
    if (nul < 0) continue;
    if (nul != fd) {
      ::_dup2(nul, fd);
      ::_close(nul);
    }
  }
}

}  // namespace qorin::Debug::detail
