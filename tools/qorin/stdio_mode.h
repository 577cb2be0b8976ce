// The standard streams as bytes: Windows would turn "\n" into "\r\n" on
// output and stop reading at a Ctrl-Z byte. And present: a descriptor the
// tool was started without (`qorin run ... >&-`) must not be taken by the
// next file or pipe the tool opens, which would then be written to as if it
// were the screen.
#pragma once

namespace qorin::tool {

void use_binary_stdio();

}  // namespace qorin::tool
