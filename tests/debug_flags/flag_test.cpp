#include <qorin/debug.h>

#include "support/comma_locale.h"
#include "support/scoped_environment.h"
#include "support/stream_capture.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using qorin::Debug::Flag;

// Flags here are locals: each test sees only its own in the registry. The
// variable stays set for the whole test, since the first flag of a process
// reads it again.
class FlagTest : public ::testing::Test {
 protected:
  void readVariable(const std::string& text, bool reportUnused = false) {
    qorin::putEnvKstring("_QDX_DEBUG_FLAGS", text);
    Flag::reinitializeFlags(reportUnused);
  }

 private:
  qorin::testing::ScopedEnvironmentVariable variable_{"_QDX_DEBUG_FLAGS", ""};
};

TEST_F(FlagTest, SettingsFromTheVariable) {
  // NL comes first: a line break in the text after any comma ends reading.
  readVariable("NL=\"x\ny\",FOO=2.5e1,S=\"a,b\",Q='x',BAD=abc, BAR,logfile=2,REP=1,REP=2,T='12ab'");
  struct Case { const char* name; bool numeric; bool string; double number; const char* text; };
  const Case cases[] = {
      {"FOO", true, false, 25, "25"}, {"S", false, true, 0, "a,b"},    {"Q", false, true, 0, "x"},
      {"BAD", false, false, 0, ""},   {"BAR", true, false, 1, "1"},    {"LOGFILE", false, false, 0, ""},
      {"REP", true, false, 2, "2"},   {"T", false, true, 12, "12ab"},
      {"NL", true, false, 0, "0"},  // not "quoted" with a line break inside: atof
  };
  for (const Case& c : cases) {
    Flag flag(c.name);
    EXPECT_EQ(flag.isSet(), c.numeric || c.string) << c.name;
    EXPECT_EQ(flag.isNumeric(), c.numeric) << c.name;
    EXPECT_EQ(flag.isString(), c.string) << c.name;
    EXPECT_EQ(flag.asNumber(), c.number) << c.name;
    EXPECT_EQ(flag.stringValue(), c.text) << c.name;
  }
}

TEST_F(FlagTest, ProgramSetValues) {
  readVariable("KEPT=4");
  Flag flag("PROGRAM_SET");
  struct Case { double number; int integer; const char* text; };
  const Case cases[] = {{2.9, 2, "2.9"}, {-2.9, -2, "-2.9"}, {1e20, INT_MAX, "1e+20"}, {-1e20, INT_MIN, "-1e+20"},
                        {-2147483647.9, -2147483647, "-2147483647.9"}};
  for (const Case& c : cases) {
    flag.setNumericValue(c.number);
    EXPECT_EQ(flag.asInteger(), c.integer) << c.text;
    EXPECT_EQ(flag.asString(), c.text);
  }
  EXPECT_TRUE(flag.enable(false));  // keeps the number
  EXPECT_FALSE(flag.isNumeric());
  EXPECT_EQ(flag.asNumber(), 0.0);
  EXPECT_FALSE(flag.enable(true));
  EXPECT_EQ(flag.asNumber(), -2147483647.9);
  flag.setStringValue("-7.5 apples");
  EXPECT_EQ(flag.asInteger(), -7);

  Flag kept("KEPT");
  kept.setStringValue("mine");
  readVariable("KEPT=4");  // withdraws what the program set
  EXPECT_FALSE(flag.isSet());
  EXPECT_EQ(kept.asString(), "4");
}

// A host program that switches to a comma-decimal locale must not turn
// FOO=2.5 into 2 nor write 0.5 as "0,5".
TEST_F(FlagTest, NumbersIgnoreTheLocale) {
  qorin::testing::CommaLocale german;
  if (!german.active()) GTEST_SKIP() << "no comma-decimal locale (./scripts/bootstrap makes one)";
  readVariable("FOO=2.5,T='0.5 volts'");
  Flag foo("FOO"), text("T");
  EXPECT_EQ(foo.asNumber(), 2.5);
  EXPECT_EQ(foo.asString(), "2.5");
  EXPECT_EQ(text.asNumber(), 0.5);
  foo.setNumericValue(0.125);
  EXPECT_EQ(foo.asString(), "0.125");
  qorin::testing::StreamCapture capture(stderr);
  Flag::debugDump();
  EXPECT_NE(capture.release().find("is numeric (0.125)"), std::string::npos);
}

TEST_F(FlagTest, DuplicateNameThrowsAndKeepsTheFirst) {
  readVariable("DUP=9");
  Flag first("DUP");
  const auto count = Flag::flagCount();
  EXPECT_EQ(qorin::testing::thrown_message<std::runtime_error>([] { Flag second("DUP"); }),
            "Duplicate debug flag name: \"DUP\"");
  EXPECT_EQ(Flag::flagCount(), count);
  readVariable("DUP=10");
  EXPECT_EQ(first.asNumber(), 10.0);
}

TEST_F(FlagTest, DumpText) {
  struct Case { const char* variable; const char* flag; const char* expected; };
  const Case cases[] = {
      {"ONE='a b'", "ONE", "\n***** FlagManager settings:\n    \"ONE\" -> \"'a b'\"\n\n***** Existing flags:\n"
                           "    \"ONE\":\n        is SET\n        is String (a b)\n\n"},
      {"PI=3.14159265", "PI", "\n***** FlagManager settings:\n    \"PI\" -> \"3.14159265\"\n\n***** Existing flags:\n"
                              "    \"PI\":\n        is SET\n        is numeric (3.14159)\n\n"},
      {"", "OFF", "\n***** FlagManager settings:\n\n***** Existing flags:\n    \"OFF\":\n        is NOT set\n\n"},
  };
  for (const Case& c : cases) {
    readVariable(c.variable);
    Flag flag(c.flag);
    qorin::testing::StreamCapture capture(stderr);
    Flag::debugDump();
    EXPECT_EQ(capture.release(), c.expected);
  }
}

TEST_F(FlagTest, UnusedReport) {
  struct Case { const char* variable; const char* expected; };
  const Case cases[] = {{"logfile=2,LOGFILE", "***** Unused flags:\n    logfile\n\n"}, {"LOGFILE=1", ""}, {"", ""}};
  Flag flag("LOGFILE");
  for (const Case& c : cases) {
    qorin::testing::StreamCapture capture(stderr);
    readVariable(c.variable, true);
    EXPECT_EQ(capture.release(), c.expected) << c.variable;
    EXPECT_EQ(flag.isSet(), c.variable[0] != '\0') << c.variable;
  }
}

TEST(FormatString, NeverTruncates) {
  const std::string long_text(5000, 'y');
  EXPECT_EQ(qorin::Debug::formatString("<%s>", long_text.c_str()), "<" + long_text + ">");
  EXPECT_EQ(qorin::Debug::formatString("%0999d|", 1).size(), 1000u);
}

// Readers must always see one whole setting; the registry's users (register,
// unregister, reinitialize, dump) must not deadlock with them.
TEST(FlagConcurrency, ReadersWhileReinitializing) {
  qorin::testing::ScopedEnvironmentVariable variable("_QDX_DEBUG_FLAGS", "CA=1");
  Flag::reinitializeFlags(false);
  Flag a("CA"), b("CB");
  std::atomic<bool> stop{false};
  std::atomic<int> odd{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      while (!stop.load()) {
        const std::string number = a.asString(), text = b.asString();
        if (!a.isSet() || (number != "1" && number != "2") || (text != "" && text != "x,y")) ++odd;
        if (b.isString() && b.asNumber() != 0) ++odd;
      }
    });
  }
  threads.emplace_back([&] {
    while (!stop.load()) Flag temporary("CTEMP");
  });
  for (int round = 0; round < 300; ++round) {
    qorin::putEnvKstring("_QDX_DEBUG_FLAGS", round % 2 ? "CA=2,CB='x,y',CTEMP" : "CA=1");
    Flag::reinitializeFlags(false);
  }
  stop = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(odd.load(), 0);
}

}  // namespace
