// Keeps the standard descriptors taken, so that a log file or a pipe the
// logger opens never becomes descriptor 0, 1 or 2 by accident. One
// implementation per platform: posix_standard_descriptors.cpp,
// win32_standard_descriptors.cpp.
//
// Example (a program started with `>&-`, or on Windows without standard
// handles):
//   occupyStandardDescriptors();   // descriptor 1 is now the null device
//   open("run.log", ...)           // => 3 or above, never 1
#pragma once

namespace qorin::Debug::detail {

// Opens the null device on each of descriptors 0 to 2 that is closed (on
// Windows: has no handle, which also makes that the standard handle).
void occupyStandardDescriptors();

}  // namespace qorin::Debug::detail
