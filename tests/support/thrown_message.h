// The message of the exception of type E that `call` throws, so a test
// checks type and exact text in one line.
//
// Example:
//   thrown_message<std::runtime_error>([] { qorin::toInt_or_throw("x"); })
//     => "Expected a string containing a number"
#pragma once

#include <string>

namespace qorin::testing {

template <class E, class Call>
std::string thrown_message(Call call) {
  try {
    call();
  } catch (const E& e) {
    return e.what();
  }
  return "(nothing thrown)";
}

}  // namespace qorin::testing
