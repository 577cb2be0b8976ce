#include "debug/exception_with_more_info.h"

namespace qorin {

template class ExceptionWithMoreInfo<std::exception>;
template class ExceptionWithMoreInfo<std::logic_error>;
template class ExceptionWithMoreInfo<std::invalid_argument>;
template class ExceptionWithMoreInfo<std::domain_error>;
template class ExceptionWithMoreInfo<std::length_error>;
template class ExceptionWithMoreInfo<std::out_of_range>;
template class ExceptionWithMoreInfo<std::future_error>;
template class ExceptionWithMoreInfo<std::runtime_error>;
template class ExceptionWithMoreInfo<std::range_error>;
template class ExceptionWithMoreInfo<std::overflow_error>;
template class ExceptionWithMoreInfo<std::underflow_error>;
template class ExceptionWithMoreInfo<std::regex_error>;
template class ExceptionWithMoreInfo<std::system_error>;
template class ExceptionWithMoreInfo<std::ios_base::failure>;
template class ExceptionWithMoreInfo<std::bad_typeid>;
template class ExceptionWithMoreInfo<std::bad_cast>;
template class ExceptionWithMoreInfo<std::bad_weak_ptr>;
template class ExceptionWithMoreInfo<std::bad_function_call>;
template class ExceptionWithMoreInfo<std::bad_array_new_length>;
template class ExceptionWithMoreInfo<std::bad_alloc>;
template class ExceptionWithMoreInfo<std::bad_exception>;

}  // namespace qorin
