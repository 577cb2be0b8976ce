// check_annotation's promise on arbitrary text: the canonical text, checked
// again with the same settings, comes back unchanged and means the same. The
// first byte picks the settings (every unit type, none, any unit; dbmtow on
// or off), the rest is the annotation. Seeded with generated annotations.
#include <qorin/parser.h>

#include "fuzz/annotation_corpus.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

const std::vector<qorin::parser::AnnotationSettings>& settings_list() {
  static const auto all = qorin::testing::all_annotation_settings();
  return all;
}

}  // namespace

// Writes generated lines, each with every setting in turn, into the first
// corpus folder on the command line.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  qorin::testing::seed_corpus_folder(*argc, *argv, 7, 400, static_cast<int>(settings_list().size()));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const qorin::parser::AnnotationSettings& settings = settings_list()[data[0] % settings_list().size()];
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  qorin::parser::ParamItemParser parser;
  qorin::parser::AnnotationCheck first, second;
  qorin::parser::check_annotation(parser, text, settings, &first);
  const std::string meaning = qorin::testing::annotation_meaning(parser);
  qorin::parser::check_annotation(parser, first.canonical, settings, &second);
  const std::string again = qorin::testing::annotation_meaning(parser);
  if (second.canonical != first.canonical || again != meaning) {
    std::fprintf(stderr, "canonical text not a fixed point:\n  input  [%s]\n  first  [%s]\n  second [%s]\n"
                 "  meant  [%s]\n  now    [%s]\n", text.c_str(), first.canonical.c_str(), second.canonical.c_str(),
                 meaning.c_str(), again.c_str());
    std::abort();
  }
  return 0;
}
