// A caught standard exception re-thrown with context: still caught as its
// standard type T (the T part is a copy of the caught object, so what() is
// unchanged) and as MoreInfoForException, whose messages start with the
// caught object's what() text.
//
// Example:
//   throw ExceptionWithMoreInfo<std::out_of_range>(caught, "m", caught.what());
//   // catch (const std::out_of_range& e)     => e.what() == caught.what()
//   // catch (const MoreInfoForException& e)  => e.fullMessage() == "m: " + caught.what()
//
// Only the standard types listed below are instantiated; rethrowMessage is
// the one place that throws them.
#pragma once

#include <qorin/debug.h>

#include <functional>
#include <future>
#include <ios>
#include <memory>
#include <new>
#include <regex>
#include <stdexcept>
#include <system_error>
#include <typeinfo>

namespace qorin {

template <typename T>
class ExceptionWithMoreInfo : public T, public MoreInfoForException {
 public:
  ExceptionWithMoreInfo(const T& caught, const std::string& message, const std::string& caughtWhat)
      : T(caught), MoreInfoForException(caughtWhat) {
    addMessage(message);
  }
};

extern template class ExceptionWithMoreInfo<std::exception>;
extern template class ExceptionWithMoreInfo<std::logic_error>;
extern template class ExceptionWithMoreInfo<std::invalid_argument>;
extern template class ExceptionWithMoreInfo<std::domain_error>;
extern template class ExceptionWithMoreInfo<std::length_error>;
extern template class ExceptionWithMoreInfo<std::out_of_range>;
extern template class ExceptionWithMoreInfo<std::future_error>;
extern template class ExceptionWithMoreInfo<std::runtime_error>;
extern template class ExceptionWithMoreInfo<std::range_error>;
extern template class ExceptionWithMoreInfo<std::overflow_error>;
extern template class ExceptionWithMoreInfo<std::underflow_error>;
extern template class ExceptionWithMoreInfo<std::regex_error>;
extern template class ExceptionWithMoreInfo<std::system_error>;
extern template class ExceptionWithMoreInfo<std::ios_base::failure>;
extern template class ExceptionWithMoreInfo<std::bad_typeid>;
extern template class ExceptionWithMoreInfo<std::bad_cast>;
extern template class ExceptionWithMoreInfo<std::bad_weak_ptr>;
extern template class ExceptionWithMoreInfo<std::bad_function_call>;
extern template class ExceptionWithMoreInfo<std::bad_array_new_length>;
extern template class ExceptionWithMoreInfo<std::bad_alloc>;
extern template class ExceptionWithMoreInfo<std::bad_exception>;

}  // namespace qorin
