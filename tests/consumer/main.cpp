// Links the installed library and checks a few results through its public
// headers, including {fmt}, which reaches callers through the package.
#include <qorin/text.h>

#include <fmt/format.h>

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
  expect(fmt::format("{}-{}", "qorin", 1), "qorin-1");
  std::puts(failures == 0 ? "consumer: ok" : "consumer: FAILED");
  return failures == 0 ? 0 : 1;
}
