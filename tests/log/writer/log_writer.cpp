// Several processes appending to one log file at once.
//   qorin_log_writer write FILE ID COUNT    appends COUNT numbered lines as writer ID
//   qorin_log_writer check FILE WRITERS COUNT
//       exits 0 when FILE holds every writer's lines exactly once, whole and
//       in order; otherwise names the first faults on standard error.
#include <qorin/debug.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

// Long enough that a torn write would show.
const char kPadding[] = "................................................................";

int write(const std::string& file, int id, int count) {
  qorin::Debug::Multiplexer mux;
  mux.addFileOutput(file);
  for (int i = 0; i < count; ++i) mux.logLogMsgArgs("writer %d line %d %s\n", id, i, kPadding);
  return 0;
}

int check(const std::string& file, int writers, int count) {
  std::ifstream in(file, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<int> next(static_cast<std::size_t>(writers), 0);
  int faults = 0;
  for (std::size_t from = 0; from < text.size();) {
    std::size_t end = text.find('\n', from);
    if (end == std::string::npos) end = text.size();
    const std::string line = text.substr(from, end - from);
    from = end + 1;
    int id = -1, index = -1, used = 0;
    const bool whole = std::sscanf(line.c_str(), "l:writer %d line %d %n", &id, &index, &used) == 2 &&
                       line.compare(static_cast<std::size_t>(used), std::string::npos, kPadding) == 0;
    if (!whole || id < 0 || id >= writers || index != next[static_cast<std::size_t>(id)]) {
      if (++faults <= 5) std::fprintf(stderr, "unexpected line: [%s]\n", line.c_str());
      continue;
    }
    ++next[static_cast<std::size_t>(id)];
  }
  for (int id = 0; id < writers; ++id) {
    if (next[static_cast<std::size_t>(id)] != count) {
      std::fprintf(stderr, "writer %d: %d of %d lines\n", id, next[static_cast<std::size_t>(id)], count);
      ++faults;
    }
  }
  return faults == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 5 && std::string(argv[1]) == "write") return write(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
  if (argc == 5 && std::string(argv[1]) == "check") return check(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
  std::fputs("usage: qorin_log_writer write FILE ID COUNT | check FILE WRITERS COUNT\n", stderr);
  return 2;
}
