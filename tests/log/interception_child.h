// Interception changes the process's own standard streams and the logger
// shuts down once per process, so each interception story runs in a child
// process of its own (a gtest death test; gtest's own output stays in the
// parent). The story returns a complaint, empty when all went well; the
// child shuts the logger down, prints the complaint to the restored
// standard error and exits with 0 or 1.
//
// Example:
//   TEST_F(Interception, X) { EXPECT_IN_CHILD([] { return expectLines(...); }); }
#pragma once

#include <qorin/debug.h>

#include "support/recording_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace qorin::testing {

[[noreturn]] inline void finishChild(const std::string& complaint) {
  Debug::Logger::shutdown();
  std::fputs(complaint.c_str(), stderr);
  std::fflush(stderr);
  std::_Exit(complaint.empty() ? 0 : 1);
}

#define EXPECT_IN_CHILD(story) \
  EXPECT_EXIT(::qorin::testing::finishChild((story)()), ::testing::ExitedWithCode(0), "")

// Re-executing the test program is the one child that works alike on both
// platforms (and under ThreadSanitizer).
class InterceptionTest : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

// The logger's multiplexer with a recording output, the streams intercepted
// without mirroring; the reader starts unless asked not to.
inline std::shared_ptr<RecordingOutput> interceptStreams(bool alsoStandardOutput, bool start = true) {
  auto output = std::make_shared<RecordingOutput>();
  Debug::Logger::getInstance().multiplexer().addOutput(output);
  Debug::Logger::redirectStandardOutputs(alsoStandardOutput, false);
  if (start) Debug::Logger::start();
  return output;
}

inline std::string describe(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += "[" + line + "]";
  return text;
}

// "" when `actual` holds the expected lines in any order.
inline std::string expectLines(std::vector<std::string> actual, std::vector<std::string> expected) {
  std::sort(actual.begin(), actual.end());
  std::sort(expected.begin(), expected.end());
  if (actual == expected) return "";
  return "expected " + describe(expected) + "\n     got " + describe(actual) + "\n";
}

}  // namespace qorin::testing
