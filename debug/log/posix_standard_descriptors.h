// POSIX only: keeps the standard descriptors taken, so that a log file or a
// pipe the logger opens never becomes descriptor 0, 1 or 2 by accident.
//
// Example (a program started with `>&-`):
//   occupyStandardDescriptors();   // descriptor 1 is now the null device
//   open("run.log", ...)           // => 3 or above, never 1
#pragma once

namespace qorin::Debug::detail {

// Opens the null device on each of descriptors 0 to 2 that is closed.
void occupyStandardDescriptors();

}  // namespace qorin::Debug::detail
