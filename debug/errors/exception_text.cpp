#include "debug/errors/exception_text.h"

#include "debug/errors/handler_list.h"

#include <qorin/debug.h>

#include <exception>

namespace qorin {

namespace detail {

std::string currentExceptionText() {
  try {
    throw;
  } catch (const MoreInfoForException& inFlight) {
    return inFlight.fullMessage();
  } catch (const std::exception& inFlight) {
    std::string described = describeWithHandlers();
    return described.empty() ? inFlight.what() : described;
  } catch (...) {
    std::string described = describeWithHandlers();
    return described.empty() ? "Unknown exception encountered." : described;
  }
}

}  // namespace detail

std::string getExceptionMessage(const std::string& before, const std::string& after) {
  return errorMessages(detail::currentExceptionText(), before, after);
}

}  // namespace qorin
