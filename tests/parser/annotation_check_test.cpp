// check_annotation: the canonical text is a fixed point that keeps the
// meaning, and every problem is named.
#include <qorin/parser.h>

#include "support/annotation_corpus.h"

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::units::find_unit_type;

TEST(AnnotationCheck, CanonicalTextIsAFixedPointWithTheSameMeaning) {
  qorin::testing::AnnotationCorpus corpus(12);
  std::vector<std::string> lines;
  for (int i = 0; i < 4000; ++i) lines.push_back(corpus.next());
  ParamItemParser parser;
  AnnotationCheck first, second;
  int failures = 0;
  for (const AnnotationSettings& settings : qorin::testing::all_annotation_settings()) {
    for (const std::string& line : lines) {
      check_annotation(parser, line, settings, &first);
      const std::string meaning = qorin::testing::annotation_meaning(parser);
      check_annotation(parser, first.canonical, settings, &second);
      if (second.canonical == first.canonical && qorin::testing::annotation_meaning(parser) == meaning) continue;
      if (++failures > 20) continue;
      ADD_FAILURE() << (settings.unit_type ? settings.unit_type->unit_type_name() : settings.allow_any_unit ? "any" : "none")
                    << (settings.use_dbmtow_functions ? "" : " no-dbmtow") << "\n  input  " << line << "\n  first  "
                    << first.canonical << "\n  second " << second.canonical << "\n  meant  " << meaning
                    << "\n  now    " << qorin::testing::annotation_meaning(parser);
    }
  }
  EXPECT_EQ(failures, 0);
}

}  // namespace
