// Sets an environment variable for one scope and restores what was there
// (an absent variable is restored as empty, which the library reads as
// absent).
//
// Example:
//   ScopedEnvironmentVariable flags("_QDX_DEBUG_FLAGS", "FOO=1");
#pragma once

#include <qorin/env.h>

#include <string>
#include <utility>

namespace qorin::testing {

class ScopedEnvironmentVariable {
 public:
  ScopedEnvironmentVariable(std::string name, const std::string& value) : name_(std::move(name)) {
    getEnvKstringAllowEmpty(name_, &previous_);  // leaves previous_ empty when absent
    putEnvKstring(name_, value);
  }
  ~ScopedEnvironmentVariable() { putEnvKstring(name_, previous_); }
  ScopedEnvironmentVariable(const ScopedEnvironmentVariable&) = delete;
  ScopedEnvironmentVariable& operator=(const ScopedEnvironmentVariable&) = delete;

 private:
  std::string name_;
  std::string previous_;
};

}  // namespace qorin::testing
