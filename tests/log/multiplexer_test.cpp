#include <qorin/debug.h>

#include "support/recording_output.h"
#include "support/stream_capture.h"
#include "support/temporary_file_name.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace qorin::Debug;
using qorin::testing::RecordingOutput;
using qorin::testing::TemporaryFileName;

TEST(Multiplexer, FileLinesCarryTheTypeLetterAndDecoration) {
  struct Case { MessageType type; const char* prefix; bool noTypePrefix; const char* message; const char* expected; };
  const Case cases[] = {
      {STD_MSG, "", false, "hello\n", "s:hello\n"}, {ERR_MSG, "", false, "oops\n", "e:oops\n"},
      {LOG_MSG, "", false, "note", "l:note"},  // no line feed added
      {LOG_MSG, "sim", false, "x\n", "l:sim: x\n"}, {STD_MSG, "sim", true, "x\n", "sim: x\n"},
      {STD_MSG, "", false, "", ""},  // an empty line is not written
  };
  for (const Case& c : cases) {
    TemporaryFileName log("mux");
    Multiplexer mux;
    mux.addFileOutput(log.name());
    mux.setPrefix(c.prefix);
    if (c.noTypePrefix) qorinCoreLogFileNoTypePrefixFlag().setNumericValue(1);
    mux.logGenericMsg(c.type, c.message);
    qorinCoreLogFileNoTypePrefixFlag().clear();
    mux.removeFileOutput();
    EXPECT_EQ(log.read(), c.expected) << c.message;
  }
}

TEST(Multiplexer, TimeStampPrefixAndThreadIdentifierInThatOrder) {
  Multiplexer mux;
  auto output = std::make_shared<RecordingOutput>();
  mux.addOutput(output);
  mux.addOutput(output);  // registered once only
  EXPECT_EQ(mux.setPrefix("sim"), "");
  EXPECT_FALSE(mux.enableThreadIDs(true));
  EXPECT_FALSE(mux.enableTimestamps(true));
  EXPECT_TRUE(mux.enableTimestamps(true));
  mux.logLogMsgArgs("%s=%d\n", "n", 5);
  const auto lines = output->lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(std::regex_match(lines[0], std::regex(R"(2\|\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{6}: sim: T\d+: n=5\n)")))
      << lines[0];
}

TEST(Multiplexer, LongFormattedMessagesLoseTheirLastCharacter) {
  Multiplexer mux;
  auto output = std::make_shared<RecordingOutput>();
  mux.addOutput(output);
  for (std::size_t length : {9999u, 10000u, 25000u}) {
    mux.stdLogMsgArgs("%s", std::string(length, 'x').c_str());
  }
  mux.stdLogMsgArgs(nullptr);  // logs nothing
  const auto lines = output->lines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].size(), 2 + 9999u);
  EXPECT_EQ(lines[1].size(), 2 + 9999u);
  EXPECT_EQ(lines[2].size(), 2 + 24999u);
}

TEST(Multiplexer, DisabledWritesUndecoratedToTheStandardStreams) {
  Multiplexer mux;
  auto output = std::make_shared<RecordingOutput>();
  mux.addOutput(output);
  mux.setPrefix("sim");
  EXPECT_TRUE(mux.enable(false));
  qorin::testing::StreamCapture out(stdout);
  qorin::testing::StreamCapture err(stderr);
  mux.stdLogMsg("o\n");
  mux.errLogMsg("e\n");
  mux.logLogMsg("l\n");
  EXPECT_EQ(err.release(), "e\nl\n");
  EXPECT_EQ(out.release(), "o\n");
  EXPECT_TRUE(output->lines().empty());
}

TEST(Multiplexer, AFileThatCannotBeOpenedKeepsThePreviousOne) {
  TemporaryFileName log("keep");
  Multiplexer mux;
  mux.addFileOutput(log.name());
  const TemporaryFileName nowhere("nowhere");
  const std::string bad = nowhere.name() + "/dir.log";
  EXPECT_EQ(qorin::testing::thrown_message<std::runtime_error>([&] { mux.addFileOutput(bad); }),
            "Can't open log file: \"" + bad + "\": No such file or directory");
  EXPECT_TRUE(mux.fileOutputExists());
  mux.stdLogMsg("still here\n");
  mux.removeFileOutput();
  EXPECT_FALSE(mux.anOutputExists());
  EXPECT_EQ(log.read(), "s:still here\n");
}

TEST(Multiplexer, InitializeOpensTheNamedFileOrLogfileOrDropsMessages) {
  TemporaryFileName named("named");
  TemporaryFileName flagged("flagged");
  qorinCoreLogFileNameFlag().setStringValue(flagged.name());
  {
    Multiplexer mux;
    EXPECT_TRUE(mux.initialize(named.name().c_str()));
    EXPECT_TRUE(mux.hasBeenInitialized());
    mux.stdLogMsg("a\n");
  }
  {
    Multiplexer mux;
    mux.initialize();
    mux.stdLogMsg("b\n");
  }
  const TemporaryFileName nowhere("nowhere");
  const std::string bad = nowhere.name() + "/dir.log";
  qorinCoreLogFileNameFlag().setStringValue(bad);
  {
    Multiplexer mux;
    auto output = std::make_shared<RecordingOutput>();
    mux.addOutput(output);
    qorin::testing::StreamCapture err(stderr);
    EXPECT_FALSE(mux.initialize());  // no exception, the reason on standard error
    EXPECT_EQ(err.release(), "Can't open log file: \"" + bad + "\": No such file or directory\n");
    EXPECT_TRUE(mux.hasBeenInitialized());  // tried, not to be tried again
    mux.stdLogMsg("c\n");
    EXPECT_TRUE(output->lines().empty());
    EXPECT_TRUE(mux.initialize(flagged.name().c_str()));  // a good file revives it
    mux.stdLogMsg("d\n");
    EXPECT_EQ(output->lines(), std::vector<std::string>{"0|d\n"});
  }
  qorinCoreLogFileNameFlag().clear();
  EXPECT_EQ(named.read(), "s:a\n");
  EXPECT_EQ(flagged.read(), "s:b\ns:d\n");
}

// The file is appended to, never truncated: a second run keeps the first's lines.
TEST(Multiplexer, ASecondRunAppendsToTheFile) {
  TemporaryFileName log("append");
  for (const char* run : {"first\n", "second\n"}) {
    Multiplexer mux;
    mux.addFileOutput(log.name());
    mux.logLogMsg(run);
  }
  EXPECT_EQ(log.read(), "l:first\nl:second\n");
}

// A stream read by the program itself is logged as intercepted streams are:
// lines whole whatever the pieces, every byte but carriage returns, the
// lines of one piece with one append, the unfinished last one ended.
TEST(StreamLineLogger, LinesOfAStreamReadByTheProgram) {
  using namespace std::string_literals;
  TemporaryFileName log("stream");
  Multiplexer mux;
  mux.addFileOutput(log.name());
  StreamLineLogger errors(mux, ERR_MSG);
  errors.log("50%\rdo");
  EXPECT_EQ(log.read(), "");
  errors.log("ne\na\0b\nrest"s);
  EXPECT_EQ(log.read(), "e:50%done\ne:a\0b\n"s);
  errors.finish();
  errors.finish();  // nothing left
  EXPECT_EQ(log.read(), "e:50%done\ne:a\0b\ne:rest\n"s);
}

// Every line exactly once, untorn, each thread's lines in its own order.
TEST(LogConcurrency, EightThreadsIntoOneFile) {
  constexpr int kThreads = 8, kLines = 10000;
  qorin::testing::TemporaryFileName log("threads");
  {
    Multiplexer mux;
    mux.addFileOutput(log.name());
    mux.enableThreadIDs(true);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&mux, t] {
        for (int i = 0; i < kLines; ++i) mux.logLogMsgArgs("thread %d line %d of a test text\n", t, i);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  std::istringstream text(log.read());
  std::vector<int> next(kThreads, 0);
  int count = 0;
  for (std::string line; std::getline(text, line); ++count) {
    int thread = -1, index = -1, end = 0;
    std::sscanf(line.c_str(), "l:T%*d: thread %d line %d of a test text%n", &thread, &index, &end);
    ASSERT_TRUE(end == static_cast<int>(line.size()) && thread >= 0 && thread < kThreads) << line;
    ASSERT_EQ(index, next[thread]++) << line;
  }
  EXPECT_EQ(count, kThreads * kLines);
}

}  // namespace
