#include <qorin/debug.h>

#include <qorin/env.h>

#include "log/interception_child.h"
#include "support/stream_capture.h"
#include "support/temporary_file_name.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

using namespace qorin::Debug;
using qorin::testing::expectLines;
using qorin::testing::interceptStreams;
using Interception = qorin::testing::InterceptionTest;

TEST_F(Interception, LongLinesArriveInPiecesCarriageReturnsAreDroppedChildrenAreLogged) {
  EXPECT_IN_CHILD([] {
    auto output = interceptStreams(true);
    std::fputs((std::string(25000, 'x') + "\n").c_str(), stdout);
    std::printf("a\r\n");
    std::fputs("err\n", stderr);  // without STREAMDOUBLEPIPE: standard output
    std::fflush(nullptr);
    const int status = std::system("echo from-child");  // a child process's output too
    Logger::waitForStreamSync();
    const std::string piece(MAX_LINE_LENGTH, 'x');
    return (status == 0 ? "" : "system failed\n") +
           expectLines(output->lines(), {"0|" + piece, "0|" + piece, "0|" + std::string(25000 - 2 * 10240, 'x') + "\n",
                                         "0|a\n", "0|err\n", "0|from-child\n"});
  });
}

TEST_F(Interception, DoublePipeKeepsStandardErrorApartAndLinesNeverMix) {
  EXPECT_IN_CHILD([] {
    qorinCoreLogStreamDoublePipeFlag().setNumericValue(1);
    auto output = interceptStreams(true);
    std::fputs("ab", stdout);
    std::fputs("cd\n", stderr);
    std::fputs("ef\n", stdout);
    Logger::waitForStreamSync();
    return expectLines(output->lines(), {"0|abef\n", "1|cd\n"});
  });
}

TEST_F(Interception, NothingIsReadWhilePaused) {
  EXPECT_IN_CHILD([] {
    auto output = interceptStreams(true, false);
    std::fputs("p\n", stdout);
    Logger::waitForStreamSync();  // at once: paused
    std::string complaint = expectLines(output->lines(), {});
    Logger::start();
    Logger::waitForStreamSync();
    Logger::pause();
    std::fputs("q\n", stdout);
    Logger::waitForStreamSync();
    complaint += expectLines(output->lines(), {"0|p\n"});
    Logger::unpause();
    Logger::waitForStreamSync();
    return complaint + expectLines(output->lines(), {"0|p\n", "0|q\n"});
  });
}

TEST_F(Interception, ShutdownDeliversTheRestAndRestoresTheStreamsOnce) {
  EXPECT_IN_CHILD([] {
    qorin::testing::StreamCapture screen(stdout);
    auto output = interceptStreams(true);
    std::fputs("line\nunfinished", stdout);
    Logger::shutdown();
    Logger::shutdown();
    Logger::waitForStreamSync();
    std::fputs("after\n", stdout);
    std::string shown = screen.release();
    shown.erase(std::remove(shown.begin(), shown.end(), '\r'), shown.end());  // Windows text mode
    return expectLines(output->lines(), {"0|line\n", "0|unfinished\n"}) +
           (shown == "after\n" ? "" : "screen: " + shown + "\n") +
           (Logger::threadingAlreadyInitialized() ? "still intercepting\n" : "");
  });
}

TEST_F(Interception, MirroringShowsStreamsAndOnlyAskedForLogMessages) {
  EXPECT_IN_CHILD([] {
    qorin::testing::StreamCapture screen(stdout);
    qorin::testing::StreamCapture errors(stderr);
    Logger::redirectStandardOutputs(true, true);
    Logger::start();
    std::fputs("o\n", stdout);
    Logger::waitForStreamSync();
    std::fputs("e\n", stderr);  // a standard output line without STREAMDOUBLEPIPE
    Logger::waitForStreamSync();
    Logger::logMsg("l1\n");
    qorinCoreLogAlsoMirrorLogsFlag().setNumericValue(1);
    Logger::logMsg("l2\n");
    Logger::shutdown();
    const std::string out = screen.release();
    const std::string err = errors.release();
    return out == "o\ne\n" && err == "l2\n" ? std::string() : "out [" + out + "] err [" + err + "]\n";
  });
}

TEST_F(Interception, InterceptStreamsZeroTakesStandardErrorAlone) {
  EXPECT_IN_CHILD([] {
    auto output = std::make_shared<qorin::testing::RecordingOutput>();
    Logger::getInstance().multiplexer().addOutput(output);
    qorinCoreLogInterceptStreamsFlag().setNumericValue(0);
    qorinCoreLogNoMirrorStreamsFlag().setNumericValue(1);
    Logger::initialize(nullptr, true);
    std::string complaint = Logger::threadingAlreadyInitialized() ? "" : "not intercepting\n";
    std::fputs("e\n", stderr);
    std::fputs("not logged\n", stdout);
    Logger::waitForStreamSync();
    return complaint + expectLines(output->lines(), {"0|e\n"});
  });
}

TEST_F(Interception, ThreadsAreNumberedFromOneAndKeepTheirNumber) {
  EXPECT_IN_CHILD([] {
    Multiplexer mux;
    auto output = std::make_shared<qorin::testing::RecordingOutput>();
    mux.addOutput(output);
    mux.enableThreadIDs(true);
    mux.logLogMsg("a\n");
    std::thread([&] { mux.logLogMsg("b\n"); }).join();
    std::thread([&] { mux.logLogMsg("c\n"); }).join();
    mux.logLogMsg("d\n");  // the main thread keeps its number
    return expectLines(output->lines(), {"2|T1: a\n", "2|T2: b\n", "2|T3: c\n", "2|T1: d\n"});
  });
}

// A burst just before exit keeps the stream thread busy as the process ends:
// it must not be stopped in the middle of a read.
TEST_F(Interception, NormalExitDeliversTheLastLines) {
  // The child re-runs the test up to the death statement: it takes the
  // parent's file name from the environment.
  static const qorin::testing::TemporaryFileName own("exit");
  const char* inherited = std::getenv("QORIN_EXIT_TEST_LOG");
  const std::string log = inherited && *inherited ? inherited : own.name();
  qorin::putEnvKstring("QORIN_EXIT_TEST_LOG", log);
  std::string burst, expected;
  for (int i = 0; i < 3000; ++i) burst += "line " + std::to_string(i) + "\n";
  EXPECT_EXIT(
      {
        Logger::initialize(log.c_str(), false);
        Logger::redirectStandardOutputs(true, false);
        Logger::start();
        std::fwrite(burst.data(), 1, burst.size(), stdout);
        std::fputs("tail", stderr);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  qorin::putEnvKstring("QORIN_EXIT_TEST_LOG", "");
  for (int i = 0; i < 3000; ++i) expected += "s:line " + std::to_string(i) + "\n";
  std::string got = own.read();
  const std::size_t tail = got.find("s:tail\n");  // the unfinished line ended
  ASSERT_NE(tail, std::string::npos) << got.substr(got.size() > 200 ? got.size() - 200 : 0);
  EXPECT_EQ(got.erase(tail, 7), expected);
}

}  // namespace
