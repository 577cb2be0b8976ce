// POSIX only: the environment holds UTF-8 bytes already.
#include "env/environment_os.h"

#include <cstdlib>
#include <new>

namespace qorin::detail {

bool os_read_environment(const std::string& name, std::string* value) {
  const char* text = std::getenv(name.c_str());
  // Empty counts as absent, as it must on Windows.
  if (text == nullptr || *text == '\0') return false;
  *value = text;
  return true;
}

void os_write_environment(const std::string& name, const std::string& value) {
  if (::setenv(name.c_str(), value.c_str(), 1) != 0) throw std::bad_alloc();
}

}  // namespace qorin::detail
