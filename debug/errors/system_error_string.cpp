#include "debug/errors/system_error_text.h"

#include <qorin/debug.h>

namespace qorin {

std::string get_system_error_string(unsigned long code) { return detail::systemErrorText(code); }

}  // namespace qorin
