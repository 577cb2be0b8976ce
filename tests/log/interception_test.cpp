#include <qorin/debug.h>

#include <qorin/env.h>

#include "log/interception_child.h"
#include "support/stream_capture.h"
#include "support/temporary_file_name.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
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
    return out == qorin::testing::crtText("o\ne\n") && err == "l2\n" ? std::string()
                                                                    : "out [" + out + "] err [" + err + "]\n";
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
  const qorin::testing::SharedLogFile log("QORIN_EXIT_TEST_LOG", "exit");
  const std::string burst = qorin::testing::numberedLines("line", 3000);
  EXPECT_EXIT(
      {
        Logger::initialize(log.name().c_str(), false);
        Logger::redirectStandardOutputs(true, false);
        Logger::start();
        std::fwrite(burst.data(), 1, burst.size(), stdout);
        std::fputs("tail", stderr);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  std::string got = log.read();
  const std::size_t tail = got.find("s:tail\n");  // the unfinished line ended
  ASSERT_NE(tail, std::string::npos) << got.substr(got.size() > 200 ? got.size() - 200 : 0);
  EXPECT_EQ(got.erase(tail, 7), qorin::testing::numberedLines("line", 3000, true));
}

// What a dying process wrote before it died is in the log, the runtime's last
// words included; the process still dies as it would have.
TEST_F(Interception, DyingProcessesLogWhatTheyWrote) {
  const qorin::testing::SharedLogFile log("QORIN_DEATH_TEST_LOG", "death");
  const std::string burst = qorin::testing::numberedLines("line", 20000);
  const auto writeThenDie = [&](void (*die)()) {
    Logger::initialize(log.name().c_str(), false);
    Logger::redirectStandardOutputs(true, false);
    Logger::start();
    std::fwrite(burst.data(), 1, burst.size(), stdout);
    std::fputs("last words without a line feed", stdout);
    die();
  };
  const auto died = [](int status) { return status != 0; };
  struct Death { const char* name; void (*die)(); const char* lastWords; };
  const Death deaths[] = {
      {"abort", [] { std::abort(); }, ""},
      {"uncaught exception", [] { std::thread([] { throw std::runtime_error("boom"); }).join(); }, "what():  boom\n"},
      {"invalid memory access", [] {
         void (*volatile nowhere)() = nullptr;  // a call, which the undefined-behaviour checks let through
         nowhere();
       }, ""},
  };
  const std::string expected = qorin::testing::numberedLines("line", 20000, true);
  for (const Death& death : deaths) {
    std::remove(log.name().c_str());
    EXPECT_EXIT(writeThenDie(death.die), died, "") << death.name;
    const std::string got = log.read();
    EXPECT_TRUE(got.compare(0, expected.size(), expected) == 0)
        << death.name << ": " << got.size() << " bytes, " << std::count(got.begin(), got.end(), '\n') << " lines";
    const std::string rest = got.size() > expected.size() ? got.substr(expected.size()) : "";
    EXPECT_NE(rest.find("s:last words without a line feed\n"), std::string::npos) << death.name << ": " << rest.substr(0, 500);
    EXPECT_NE(rest.find(death.lastWords), std::string::npos) << death.name << ": " << rest.substr(0, 500);
  }
}

// Whatever the bytes, the screen gets them exactly and as they come; the log
// gets every one of them but the carriage returns, an unfinished last line
// ended with a line feed.
TEST_F(Interception, EveryByteReachesTheScreenAndTheLog) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    const qorin::testing::TemporaryFileName log("bytes");
    qorin::testing::StreamCapture screen(stdout);
    Logger::initialize(log.name().c_str(), false);
    Logger::redirectStandardOutputs(true, true);
    Logger::start();
    using namespace std::string_literals;
    const std::string written = "a\0b\xff\xfe\r\nh\0i\0\n\0progress 50%\r"s;
    std::fwrite(written.data(), 1, written.size(), stdout);
    Logger::waitForStreamSync();
    Logger::shutdown();
    const std::string shown = screen.release();
    const std::string logged = log.read();
    const std::string expected = "s:a\0b\xff\xfe\ns:h\0i\0\ns:\0progress 50%\n"s;
    return (shown == qorin::testing::crtText(written) ? "" : "screen: [" + shown + "]\n") +
           (logged == expected ? "" : "log: [" + logged + "]\n");
  });
}

// Disabled, the multiplexer writes to standard output, the very pipe the
// reader empties: a message larger than the pipe must neither deadlock nor
// vanish from the screen.
TEST_F(Interception, ADisabledMultiplexerStillShowsItsMessages) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    qorin::testing::StreamCapture screen(stdout);
    Logger::redirectStandardOutputs(true, true);
    Logger::start();
    Logger::getInstance().multiplexer().enable(false);
    const std::string message = std::string(600 * 1024, 'm') + "\n";
    Logger::stdMsg(message.c_str());
    Logger::waitForStreamSync();
    Logger::shutdown();
    const std::string shown = screen.release();
    return shown == qorin::testing::crtText(message) ? std::string()
                                                     : "screen got " + std::to_string(shown.size()) + " bytes\n";
  });
}

// A throwing output neither ends the process nor keeps the line from the
// others; its failure is reported once, on the screen the program had.
TEST_F(Interception, AThrowingOutputIsReportedOnceAndTheOthersGoOn) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    struct Throwing : OutputHandler {
      void logMsg(MessageType, const char*, const char*) override { throw std::runtime_error("disk on fire"); }
    };
    struct ThrowingFlush : ByteOutputHandler {
      void logLine(MessageType, std::string_view, std::string_view) override {}
      void flushLines() override { throw std::runtime_error("flush on fire"); }
    };
    qorin::testing::StreamCapture errors(stderr);
    Logger::getInstance().multiplexer().addOutput(std::make_shared<Throwing>());
    Logger::getInstance().multiplexer().addOutput(std::make_shared<ThrowingFlush>());
    auto output = interceptStreams(true);
    std::fputs("from the stream\n", stdout);
    Logger::waitForStreamSync();
    Logger::logMsg("from the program\n");
    std::fputs("again\n", stdout);
    Logger::waitForStreamSync();
    Logger::shutdown();
    const std::string reported = errors.release();
    return expectLines(output->lines(), {"0|from the stream\n", "2|from the program\n", "0|again\n"}) +
           (reported == "Log output failed: disk on fire\nLog output failed: flush on fire\n"
                ? ""
                : "stderr: [" + reported + "]\n");
  });
}

// After shutdown nobody reads: interception must not start again.
TEST_F(Interception, InitializeAfterShutdownLeavesTheStreamsAlone) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    qorinCoreLogInterceptStreamsFlag().setNumericValue(1);
    Logger::shutdown();
    qorin::testing::StreamCapture screen(stdout);
    const bool initialized = Logger::initialize(nullptr, true);
    const std::string big(200 * 1024, 'x');  // more than a pipe holds
    std::fwrite(big.data(), 1, big.size(), stdout);
    const std::string shown = screen.release();
    return std::string(initialized ? "initialize answered true\n" : "") +
           (Logger::threadingAlreadyInitialized() ? "intercepting\n" : "") +
           (shown == big ? "" : "screen got " + std::to_string(shown.size()) + " bytes\n");
  });
}

// The line limit is reached across two reads: the line must end there, not
// wait for ever for a line feed.
TEST_F(Interception, ALineReachingTheLimitAcrossTwoReadsEnds) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    auto output = interceptStreams(true);
    std::fputs(std::string(10000, 'a').c_str(), stdout);
    Logger::waitForStreamSync();  // the reader holds 10000 bytes of an unfinished line
    std::fputs((std::string(MAX_LINE_LENGTH - 10000, 'b') + "tail\n").c_str(), stdout);
    Logger::waitForStreamSync();
    return expectLines(output->lines(), {"0|" + std::string(10000, 'a') + std::string(MAX_LINE_LENGTH - 10000, 'b'),
                                         "0|tail\n"});
  });
}

// Without interception there is nothing to wait for; thread identifiers
// turned on survive the lazy initialisation of the first message.
TEST_F(Interception, WithoutInterceptionNothingWaitsAndSettingsSurviveLazyInitialization) {
  EXPECT_IN_CHILD([] {
    qorin::testing::watchdog(60);
    auto output = std::make_shared<qorin::testing::RecordingOutput>();
    Logger::getInstance().multiplexer().addOutput(output);
    Logger::enableThreadIDs(true);
    Logger::waitForUnpaused();
    Logger::logMsg("x\n");
    return expectLines(output->lines(), {"2|T1: x\n"});
  });
}

}  // namespace
