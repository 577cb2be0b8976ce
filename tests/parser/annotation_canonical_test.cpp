// Canonical texts: exact for typical annotations, and stable: the canonical
// text read again gives itself, for every example with every unit setting.
#include <qorin/parser.h>

#include "tools/qorin/annotation_examples.h"

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;
using qorin::tool::AnnotationExample;
using qorin::tool::kAnnotationExamples;
using qorin::tool::read_annotation;
using qorin::tool::read_example;

TEST(AnnotationCanonical, ExactTexts) {
  struct Case { const char* type; const char* text; bool valid; const char* canonical; };
  const Case cases[] = {
      {"cap", "10 pF opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }", true,
       "10pF opt{ 1pF to 20pF } stat{ gauss +/- 5% }"},
      {"freq", "2.4 GHz opt{ ppt 2 GHz to 3 GHz }", true, "2.4GHz opt{ ppt 2GHz to 3GHz }"},
      {"freq", "1 k opt{ 500 to 2 k }", true, "1kHz opt{ 500 to 2kHz }"},
      {"ind", "5nH opt{ discrete 1nH to 10nH by 1nH }", true, "5nH opt{ discrete 1nH to 10nH by 1nH }"},
      {"res", "50 Ohm   nostat{ uniform 45 Ohm to 55 Ohm }", true, "50Ohm nostat{ uniform 45Ohm to 55Ohm }"},
      {"lng", "100 um stat{ lognormal +/- 2 um } tune{ 90 um to 110 um by 1 um }", true,
       "100um stat{ lognormal +/- 2um } tune{ 90um to 110um by 1um }"},
      {"cap", "10 pF opt{ 1 to 2 by 0.1 } doe{ +/- 10 % }", false, "10pF opt{ 1 to 2 by 0.1 } doe{ +/- 10% }"},
      {"ang", "45 deg opt{ 40 deg to 50 deg }", true, "45 opt{ 40 to 50 }"},
      {"cap", "", true, ""},
  };
  for (const Case& c : cases) {
    ParamItemParser parser;
    read_annotation(parser, c.text, qorin::units::find_unit_type(c.type), false, true);
    EXPECT_EQ(parser.is_valid(), c.valid) << c.text;
    EXPECT_EQ(parser.get_combined_string(), c.canonical) << c.text;
  }
}

std::string canonical(const AnnotationExample& settings, const std::string& text) {
  ParamItemParser parser;
  read_example(parser, settings, text);
  return parser.get_combined_string();
}

TEST(AnnotationCanonical, ReadingTheCanonicalTextAgainChangesNothing) {
  // Each example with its own settings, then with every unit type, any unit,
  // and power written both ways.
  std::vector<AnnotationExample> settings;
  for (const auto& type : qorin::units::get_all_units()) {
    settings.push_back({"", type.unit_type_name().c_str(), false, true, nullptr, ""});
    settings.push_back({"", type.unit_type_name().c_str(), false, false, nullptr, ""});
  }
  settings.push_back({"", nullptr, false, true, nullptr, ""});
  settings.push_back({"", nullptr, true, true, nullptr, ""});
  for (const AnnotationExample& example : kAnnotationExamples) {
    std::string first = canonical(example, example.text);
    EXPECT_EQ(canonical(example, first), first) << example.text;
    for (const AnnotationExample& other : settings) {
      std::string again = canonical(other, example.text);
      EXPECT_EQ(canonical(other, again), again)
          << example.text << " as " << (other.unit_type ? other.unit_type : other.any_unit ? "any" : "none");
    }
  }
}

TEST(AnnotationCanonical, InvalidOptionsRoundTripAsTyped) {
  for (const char* text : {"1 opt{  1   to }", "1 stat{ Gauss +/- 1 }", "1 notune{ 1 to 2 }", "1 doe{ 1 to 2 by 1 }"}) {
    ParamItemParser parser;
    read_annotation(parser, text, nullptr, false, true);
    EXPECT_FALSE(parser.is_valid()) << text;
    EXPECT_EQ(parser.get_combined_string(), text);
  }
}

}  // namespace
