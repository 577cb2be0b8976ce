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
    had_value_ = getEnvKstringAllowEmpty(name_, &previous_);
    putEnvKstring(name_, value);
  }
  ~ScopedEnvironmentVariable() { putEnvKstring(name_, had_value_ ? previous_ : std::string()); }
  ScopedEnvironmentVariable(const ScopedEnvironmentVariable&) = delete;
  ScopedEnvironmentVariable& operator=(const ScopedEnvironmentVariable&) = delete;

 private:
  std::string name_;
  std::string previous_;
  bool had_value_ = false;
};

}  // namespace qorin::testing
