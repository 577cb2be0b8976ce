#include <qorin/debug.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// A library-foreign exception type, as a host program might have.
struct ForeignError {
  std::string text;
};

// Recognises ForeignError: adds context to it in place of rethrowMessage and
// describes it. Logs every call under its name.
class ForeignHandler : public qorin::ExceptionHandlerBase {
 public:
  ForeignHandler(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}

  void handleRethrow(const std::string& message) override {
    log_.push_back(name_ + ".handleRethrow");
    if (!takesOver) return;
    try {
      throw;
    } catch (ForeignError& inFlight) {
      throw ForeignError{message + " (" + name_ + "): " + inFlight.text};
    } catch (...) {
    }
  }

  std::string describeCurrentException() override {
    log_.push_back(name_ + ".describe");
    return description;
  }

  bool takesOver = false;
  std::string description;

 private:
  std::string name_;
  std::vector<std::string>& log_;
};

using Log = std::vector<std::string>;

std::string messageOf(const std::function<void()>& throwIt) {
  try {
    throwIt();
  } catch (...) {
    return qorin::getExceptionMessage("", "");
  }
  return "nothing thrown";
}

TEST(ExceptionHandlers, AreAskedNewestFirstUntilOneThrows) {
  Log log;
  ForeignHandler older("older", log);
  ForeignHandler newer("newer", log);
  older.takesOver = true;
  try {
    try {
      throw ForeignError{"bad pin"};
    } catch (...) {
      qorin::rethrowMessage("Loading");
    }
  } catch (const ForeignError& caught) {
    EXPECT_EQ(caught.text, "Loading (older): bad pin");
  }
  EXPECT_EQ(log, (Log{"newer.handleRethrow", "older.handleRethrow"}));

  log.clear();
  newer.takesOver = true;
  try {
    try {
      throw ForeignError{"bad pin"};
    } catch (...) {
      qorin::rethrowMessage("Loading");
    }
  } catch (const ForeignError& caught) {
    EXPECT_EQ(caught.text, "Loading (newer): bad pin");
  }
  EXPECT_EQ(log, Log{"newer.handleRethrow"});
}

TEST(ExceptionHandlers, SeeStandardExceptionsBeforeTheyAreWrapped) {
  Log log;
  ForeignHandler handler("h", log);
  try {
    try {
      throw std::out_of_range("idx");
    } catch (...) {
      qorin::rethrowMessage("m");
    }
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(log, Log{"h.handleRethrow"});
    EXPECT_EQ(caught.fullMessage(), "m: idx");
    // Already carrying context: the handlers are not asked again.
    log.clear();
    EXPECT_EQ(messageOf([] { qorin::rethrowMessage("n"); }), "n: m: idx");
    EXPECT_EQ(log, Log{});
  }
}

TEST(ExceptionHandlers, DescribeNonContextExceptionsFirstNonEmptyWins) {
  Log log;
  ForeignHandler older("older", log);
  ForeignHandler newer("newer", log);
  const auto foreign = [] { throw ForeignError{"x"}; };
  const auto standard = [] { throw std::runtime_error("what"); };
  const auto withContext = [] { throw qorin::MoreInfoForException("context"); };

  EXPECT_EQ(messageOf(foreign), "Unknown exception encountered.");
  EXPECT_EQ(log, (Log{"newer.describe", "older.describe"}));
  EXPECT_EQ(messageOf(standard), "what");

  older.description = "from older";
  EXPECT_EQ(messageOf(foreign), "from older");
  EXPECT_EQ(messageOf(standard), "from older");
  newer.description = "from newer";
  log.clear();
  EXPECT_EQ(messageOf(foreign), "from newer");
  EXPECT_EQ(log, Log{"newer.describe"});

  log.clear();
  EXPECT_EQ(messageOf(withContext), "context");
  EXPECT_EQ(log, Log{});
}

TEST(ExceptionHandlers, OnlyLiveOriginalsAreAsked) {
  Log log;
  ForeignHandler kept("kept", log);
  {
    ForeignHandler gone("gone", log);
    const ForeignHandler copy(kept);  // not registered
    (void)copy;
  }
  messageOf([] { throw ForeignError{"x"}; });
  EXPECT_EQ(log, Log{"kept.describe"});
}

}  // namespace
