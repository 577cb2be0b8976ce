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
// Only the standard types of QORIN_STANDARD_EXCEPTIONS are instantiated;
// rethrowMessage is the one place that throws them.
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

// The standard exception types rethrowMessage recognises, each derived type
// before its bases (ios_base::failure is a system_error, bad_array_new_length
// a bad_alloc), std::exception last since every one of them is one.
#define QORIN_STANDARD_EXCEPTIONS(X)                                                                  \
  X(std::invalid_argument) X(std::domain_error) X(std::length_error) X(std::out_of_range)            \
  X(std::future_error) X(std::logic_error) X(std::ios_base::failure) X(std::range_error)             \
  X(std::overflow_error) X(std::underflow_error) X(std::regex_error) X(std::system_error)            \
  X(std::runtime_error) X(std::bad_typeid) X(std::bad_cast) X(std::bad_weak_ptr)                     \
  X(std::bad_function_call) X(std::bad_array_new_length) X(std::bad_alloc) X(std::bad_exception)     \
  X(std::exception)

#define QORIN_DECLARE_EXCEPTION_WITH_MORE_INFO(T) extern template class ExceptionWithMoreInfo<T>;
QORIN_STANDARD_EXCEPTIONS(QORIN_DECLARE_EXCEPTION_WITH_MORE_INFO)
#undef QORIN_DECLARE_EXCEPTION_WITH_MORE_INFO

}  // namespace qorin
