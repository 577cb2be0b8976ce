#include <qorin/env.h>

#include "env/environment_os.h"

namespace qorin {

bool getEnvKstringAllowEmpty(const std::string& name, std::string* value) {
  return detail::os_read_environment(name, value);
}

std::string getEnvKstring(const std::string& name) {
  std::string value;
  getEnvKstringAllowEmpty(name, &value);
  return value;
}

void putEnvKstring(const std::string& name, const std::string& value) {
  detail::os_write_environment(name, value);
}

}  // namespace qorin
