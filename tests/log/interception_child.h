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

#include <qorin/env.h>

#include "support/recording_output.h"
#include "support/temporary_file_name.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>
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

// The sanitizers bring deadly-signal handlers and exit-time leak checks of
// their own, which write into the intercepted streams and end the process
// their own way.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// A story that would hang (a deadlock, a reader that never ends a line)
// ends the child with status 3 after `seconds` instead.
inline void watchdog(int seconds) {
  std::thread([seconds] {
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    std::_Exit(3);
  }).detach();
}

// A file that a child process writes and its parent reads: the child re-runs
// the test up to its death statement and finds the parent's name in the
// environment variable `variable` (and makes no scratch folder of its own,
// which a dying child could not remove).
class SharedLogFile {
 public:
  SharedLogFile(const char* variable, const char* tag) : variable_(variable) {
    const char* inherited = std::getenv(variable);
    if (inherited && *inherited) {
      name_ = inherited;
      return;
    }
    own_.emplace(tag);
    name_ = own_->name();
    putEnvKstring(variable_, name_);
  }
  ~SharedLogFile() {
    if (own_) putEnvKstring(variable_, "");
  }
  const std::string& name() const { return name_; }
  std::string read() const { return own_ ? own_->read() : std::string(); }

 private:
  const char* variable_;
  std::optional<TemporaryFileName> own_;
  std::string name_;
};

// `text` as the C runtime writes it to a stream in text mode: with "\r\n"
// for each "\n" on Windows, unchanged elsewhere.
inline std::string crtText(const std::string& text) {
  const TemporaryFileName file("crt");
  std::FILE* stream = std::fopen(file.name().c_str(), "w");
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fclose(stream);
  return file.read();
}

// Lines "<tag> <index> <padding>\n", 40 bytes each, as a solver writes its
// progress; with `logged`, each as a log file holds it ("s:" before it).
inline std::string numberedLines(const std::string& tag, int count, bool logged = false) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    std::string line = tag + " " + std::to_string(i) + " ";
    line.resize(39, '.');
    text += (logged ? "s:" : "") + line + "\n";
  }
  return text;
}

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
