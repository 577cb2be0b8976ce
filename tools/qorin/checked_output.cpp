#include "checked_output.h"

#include "command.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace qorin::tool {

namespace {
int first_write_error = 0;

void remember_failure() {
  if (first_write_error == 0) first_write_error = errno != 0 ? errno : EIO;
}
}  // namespace

void write_output(std::string_view text) {
  if (first_write_error != 0 || text.empty()) return;
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) remember_failure();
}

int finish_output(int status) {
  errno = 0;
  std::cout.flush();
  if (!std::cout) remember_failure();
  errno = 0;
  // Closing reports what a flush may not: the last write of a full device.
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) remember_failure();
  errno = 0;
  if (std::fclose(stdout) != 0) remember_failure();
  if (first_write_error == 0) return status;
  std::cerr << "qorin: write error: " << std::strerror(first_write_error) << "\n";
  return kExitIo;
}

int read_error(const std::string& name, int error_number) {
  std::cerr << "qorin: read error: " << name << ": " << std::strerror(error_number) << "\n";
  return kExitIo;
}

}  // namespace qorin::tool
