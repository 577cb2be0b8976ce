#include "debug/errors/exception_with_more_info.h"

namespace qorin {

#define QORIN_INSTANTIATE_EXCEPTION_WITH_MORE_INFO(T) template class ExceptionWithMoreInfo<T>;
QORIN_STANDARD_EXCEPTIONS(QORIN_INSTANTIATE_EXCEPTION_WITH_MORE_INFO)
#undef QORIN_INSTANTIATE_EXCEPTION_WITH_MORE_INFO

}  // namespace qorin
