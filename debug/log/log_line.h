// Building the decorated log line: "%19s.%06d: %s%s" from the local time
// text "%F %H:%M:%S", the microseconds, the decoration and the message.
// Written by hand: the C runtimes disagree on "%F" and printf costs more
// than the rest of a log write.
#pragma once

#include <string>

namespace qorin::Debug::detail {

// "YYYY-MM-DD HH:MM:SS" of `seconds` in local time; false when the time
// cannot be converted.
bool formatLocalSeconds(long long seconds, std::string& out);

// Appends `value` as exactly `width` decimal digits, zero-padded.
void appendDigits(std::string& out, unsigned value, int width);

// This thread's identifier "T<n>": threads are numbered from 1 in the order
// they first ask.
const std::string& threadIdentifier();

}  // namespace qorin::Debug::detail
