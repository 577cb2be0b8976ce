#include "debug/exception_with_more_info.h"
#include "debug/handler_list.h"

#include <qorin/debug.h>

namespace qorin {
namespace {

template <typename T>
void throwIfA(const std::exception& caught, const std::string& message) {
  if (const T* typed = dynamic_cast<const T*>(&caught)) {
    throw ExceptionWithMoreInfo<T>(*typed, message, caught.what());
  }
}

// Throws as the first of Candidates that `caught` is; returns if none.
template <typename... Candidates>
void throwAsFirstOf(const std::exception& caught, const std::string& message) {
  (throwIfA<Candidates>(caught, message), ...);
}

// Derived types come before their bases: ios_base::failure is a
// runtime_error (a system_error), bad_array_new_length is a bad_alloc.
[[noreturn]] void throwStandardWithMoreInfo(const std::exception& caught,
                                            const std::string& message) {
  throwAsFirstOf<std::invalid_argument, std::domain_error, std::length_error, std::out_of_range,
                 std::future_error, std::logic_error>(caught, message);
  throwAsFirstOf<std::ios_base::failure>(caught, message);
  throwAsFirstOf<std::range_error, std::overflow_error, std::underflow_error, std::regex_error,
                 std::system_error, std::runtime_error>(caught, message);
  throwAsFirstOf<std::bad_typeid, std::bad_cast, std::bad_weak_ptr, std::bad_function_call,
                 std::bad_array_new_length, std::bad_alloc, std::bad_exception>(caught, message);
  throw ExceptionWithMoreInfo<std::exception>(caught, message, caught.what());
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
