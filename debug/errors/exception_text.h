// The text by which the exception in flight is reported. Only inside a catch
// block.
#pragma once

#include <string>

namespace qorin::detail {

// A MoreInfoForException's fullMessage(); otherwise the first handler's
// non-empty describeCurrentException(), else what() for a standard exception
// and "Unknown exception encountered." for anything else.
std::string currentExceptionText();

}  // namespace qorin::detail
