// The registered ExceptionHandlerBase objects, asked newest first with the
// handler list locked. Both functions run inside a catch block: the handlers
// inspect the exception in flight themselves.
#pragma once

#include <string>

namespace qorin::detail {

// The first non-empty describeCurrentException() answer, or "" when no
// handler recognises the exception in flight.
std::string describeWithHandlers();

// Gives every handler handleRethrow(message); a handler that throws ends the
// walk and its exception propagates. Returns when none threw.
void offerRethrowToHandlers(const std::string& message);

}  // namespace qorin::detail
