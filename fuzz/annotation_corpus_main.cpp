// Writes generated annotations, one per line, for the comparison of the
// Linux and Windows builds of qorin (scripts/compare-platforms).
// Usage: qorin_annotation_corpus [LINES [SEED]]
#include "fuzz/annotation_corpus.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  const long lines = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 20000;
  qorin::testing::AnnotationCorpus corpus(argc > 2 ? static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10)) : 1);
  for (long i = 0; i < lines; ++i) std::printf("%s\n", corpus.next().c_str());
  return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 2;
}
