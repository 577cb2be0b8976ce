// The standard streams as bytes: Windows would turn "\n" into "\r\n" on
// output and stop reading at a Ctrl-Z byte.
#pragma once

namespace qorin::tool {

void use_binary_stdio();

}  // namespace qorin::tool
