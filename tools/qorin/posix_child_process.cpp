// POSIX only: posix_spawnp and waitpid.
#include "child_process.h"

#include <cerrno>
#include <cstring>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace qorin::tool {

int runChildProcess(const std::vector<std::string>& arguments, std::string& error) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  pid_t child = 0;
  const int failure = ::posix_spawnp(&child, argv[0], nullptr, nullptr, argv.data(), environ);
  if (failure != 0) {
    error = std::strerror(failure);
    return -1;
  }
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) {
      error = std::strerror(errno);
      return -1;
    }
  }
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return WEXITSTATUS(status);
}

}  // namespace qorin::tool
