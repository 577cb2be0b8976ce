// POSIX only: the standard streams are bytes already.
#include "stdio_mode.h"

namespace qorin::tool {

void use_binary_stdio() {}

}  // namespace qorin::tool
