// Each option kind: which sweep forms it accepts, its own words and its text.
#include <qorin/parser.h>

#include <gtest/gtest.h>

namespace {

using namespace qorin::parser;

struct KindCase {
  const char* option;
  bool valid;
  const char* canonical;  // the option's text after reformat(); invalid ones as typed
};

TEST(AnnotationKinds, LegalFormsAndCanonicalTexts) {
  const KindCase cases[] = {
      {"opt{ 1 to 2 }", true, "opt{ 1 to 2 }"},
      {"opt{ +/- 5 % }", true, "opt{ +/- 5% }"},
      {"opt{  1  pF  to  2pF }", true, "opt{ 1pF to 2pF }"},
      {"opt{ 1 to 2 by 0.1 }", false, "opt{ 1 to 2 by 0.1 }"},
      {"opt{ discrete 1 to 2 by 0.1 }", true, "opt{ discrete 1 to 2 by 0.1 }"},
      {"opt{ discrete 1 to 2 }", false, "opt{ discrete 1 to 2 }"},
      {"opt{ ppt 1 to 10 }", true, "opt{ ppt 1 to 10 }"},
      {"opt{ ppt discrete 1 to 3 by 1 }", true, "opt{ ppt discrete 1 to 3 by 1 }"},
      {"opt{ unconst }", false, "opt{ unconst }"},
      {"opt{ unconst 1 to 2 }", false, "opt{ unconst 1 to 2 }"},
      {"opt{ ppt }", false, "opt{ ppt }"},
      {"noopt{ 1  to 2 }", true, "noopt{ 1 to 2 }"},
      {"stat{ 1 to 2 }", false, "stat{ 1 to 2 }"},
      {"stat{ uniform 1 to 2 }", true, "stat{ uniform 1 to 2 }"},
      {"stat{ uniform +/- 1 pF }", true, "stat{ uniform +/- 1pF }"},
      {"stat{ gauss 1 to 2 }", false, "stat{ gauss 1 to 2 }"},
      {"stat{ gauss +/- 5 % }", true, "stat{ gauss +/- 5% }"},
      {"stat{ Gauss +/- 5 % }", false, "stat{ Gauss +/- 5 % }"},
      {"stat{ lognormal +/- 1 }", true, "stat{ lognormal +/- 1 }"},
      {"stat{ lognormal 1 to 2 }", false, "stat{ lognormal 1 to 2 }"},
      {"stat{ discrete 1 to 5 by 1 }", true, "stat{ discrete 1 to 5 by 1 }"},
      {"stat{ discrete +/- 1 }", false, "stat{ discrete +/- 1 }"},
      {"stat{ distcompname = a b }", true, "stat{ distcompname = ab }"},
      {"stat{  distcompname  =  ab  }", true, "stat{ distcompname = ab }"},
      {"stat{ distcompname = }", false, "stat{ distcompname = }"},
      {"stat{ distcompname ab }", false, "stat{ distcompname ab }"},
      {"nostat{ gauss +/- 1 }", true, "nostat{ gauss +/- 1 }"},
      {"tune{ 1 to 2 }", false, "tune{ 1 to 2 }"},
      {"tune{ 1 to 2 by 0.1 }", true, "tune{ 1 to 2 by 0.1 }"},
      {"tune{ 1 to 10 logScale }", true, "tune{ 1 to 10 logScale }"},
      {"tune{ 1 to 2 by 1 logScale }", false, "tune{ 1 to 2 by 1 logScale }"},
      {"tune{ logScale 1 to 2 }", false, "tune{ logScale 1 to 2 }"},
      {"tune{ logScale }", false, "tune{ logScale }"},
      {"tune{ +/- 1 }", false, "tune{ +/- 1 }"},
      {"doe{ 1 to 2 }", true, "doe{ 1 to 2 }"},
      {"doe{ +/- 10 % }", true, "doe{ +/- 10% }"},
      {"doe{ 1 to 2 by 1 }", false, "doe{ 1 to 2 by 1 }"},
      {"doe{ }", false, "doe{ }"},
  };
  for (const KindCase& c : cases) {
    ParamItemParser parser;
    parser.set_unit_type(qorin::units::find_unit_type("cap"));
    parser.parse(std::string("1 ") + c.option, true);
    ASSERT_EQ(parser.options().size(), 1u) << c.option;
    EXPECT_EQ(parser.is_valid(), c.valid) << c.option;
    parser.reformat();
    EXPECT_EQ(parser.get_combined_string(), std::string("1 ") + c.canonical) << c.option;
  }
}

TEST(AnnotationKinds, UnconstrainedOptionIsWrittenWithTwoBlanks) {
  ParamOptData option;
  option.set_unconstrained(true);
  option.set_sweep_type(sweep_empty);
  EXPECT_TRUE(option.sweep_type_is_legal());
  option.reformat();
  EXPECT_EQ(option.get_full_text(), "opt{ unconst  }");
  // Written back, the text parses as invalid: "unconst" reaches the sweep.
  option.parse(nullptr);
  EXPECT_TRUE(option.is_invalid());
  EXPECT_TRUE(option.is_unconstrained());
}

TEST(AnnotationKinds, DistributionComponentNameIsJoined) {
  ParamStatData stat;
  stat.set_full_text("stat{ distcompname = my comp 2 }");
  stat.parse(nullptr);
  EXPECT_TRUE(stat.is_dist_compname());
  EXPECT_EQ(stat.get_dist_compname(), "mycomp2");
  EXPECT_EQ(stat.sweep_type(), sweep_empty);
  stat.reformat();
  EXPECT_EQ(stat.get_full_text(), "stat{ distcompname = mycomp2 }");
}

TEST(AnnotationKinds, UnknownDistributionIsWrittenAsGauss) {
  ParamStatData stat;
  stat.set_type(static_cast<ParamStatData::Type>(7));
  stat.set_sweep_type(sweep_delta);
  EXPECT_FALSE(stat.sweep_type_is_legal());
  stat.reformat();
  EXPECT_EQ(stat.get_full_text(), "stat{ gauss +/-  }");
}

TEST(AnnotationKinds, LogScaleOnceParsedIsNotCleared) {
  ParamTuneData tune;
  tune.set_full_text("tune{ 1 to 2 logScale }");
  tune.parse(nullptr);
  tune.set_full_text("tune{ 1 to 3 }");
  tune.parse(nullptr);
  EXPECT_FALSE(tune.is_invalid());
  tune.reformat();
  EXPECT_EQ(tune.get_full_text(), "tune{ 1 to 3 logScale }");
}

TEST(AnnotationKinds, KindWordsAreReadAfresh) {
  ParamOptData opt;
  opt.set_full_text("opt{ ppt discrete 1 to 3 by 1 }");
  opt.parse(nullptr);
  EXPECT_TRUE(opt.is_ppt());
  EXPECT_EQ(opt.type(), ParamOptData::discrete);
  opt.set_full_text("opt{ 1 to 3 }");
  opt.parse(nullptr);
  EXPECT_FALSE(opt.is_ppt());
  EXPECT_EQ(opt.type(), ParamOptData::continuous);
  EXPECT_FALSE(opt.is_invalid());
}

}  // namespace
