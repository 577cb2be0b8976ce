// Links the installed library and checks a few results through its public
// headers. It uses no {fmt}: the package must not need it (the check script
// also configures this project with {fmt} hidden from CMake).
#include <qorin/text.h>

#include <cstdio>
#include <string>

int main() {
  int failures = 0;
  auto expect = [&](const std::string& got, const std::string& want) {
    if (got != want) {
      std::fprintf(stderr, "consumer: got \"%s\", want \"%s\"\n", got.c_str(), want.c_str());
      ++failures;
    }
  };
  expect(qorin::padString("ab", 4), "  ab");
  expect(qorin::encode_to_variable_name("a.b c", ""), "a_2eb_20c");
  std::puts(failures == 0 ? "consumer: ok" : "consumer: FAILED");
  return failures == 0 ? 0 : 1;
}
