// Windows only: the C runtime's text mode is switched off for the standard streams.
#include "stdio_mode.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace qorin::tool {

void use_binary_stdio() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

}  // namespace qorin::tool
