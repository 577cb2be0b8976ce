#include "debug/errors/exception_with_more_info.h"
#include "debug/errors/handler_list.h"

#include <qorin/debug.h>

#include <exception>

namespace qorin {
namespace {

template <typename T>
void throwIfA(const std::exception& caught, const std::string& message) {
  if (const T* typed = dynamic_cast<const T*>(&caught)) {
    throw ExceptionWithMoreInfo<T>(*typed, message, caught.what());
  }
}

// Throws as the first type of the list that `caught` is; std::exception,
// last, matches whatever got this far.
[[noreturn]] void throwStandardWithMoreInfo(const std::exception& caught,
                                            const std::string& message) {
#define QORIN_THROW_IF_A(T) throwIfA<T>(caught, message);
  QORIN_STANDARD_EXCEPTIONS(QORIN_THROW_IF_A)
#undef QORIN_THROW_IF_A
  std::terminate();
}

}  // namespace

void rethrowMessage(const std::string& message) {
  try {
    throw;
  } catch (MoreInfoForException& inFlight) {
    inFlight.addMessage(message);
    throw;
  } catch (const std::exception& inFlight) {
    detail::offerRethrowToHandlers(message);
    throwStandardWithMoreInfo(inFlight, message);
  } catch (...) {
    detail::offerRethrowToHandlers(message);
    throw;
  }
}

}  // namespace qorin
