#include <qorin/debug.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Log = std::vector<std::string>;

// A library-foreign exception type, as a host program might have.
struct ForeignError {
  std::string text;
};

// Recognises ForeignError: when `takesOver`, adds context to it in place of
// rethrowMessage; describes it as `description`. Logs its calls.
class ForeignHandler : public qorin::ExceptionHandlerBase {
 public:
  ForeignHandler(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

  void handleRethrow(const std::string& message) override {
    log_.push_back(name_ + ".handleRethrow");
    try {
      throw;
    } catch (const ForeignError& inFlight) {
      if (takesOver) throw ForeignError{message + " (" + name_ + "): " + inFlight.text};
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
  Log& log_;
};

template <typename E>
std::string rethrownText(const E& original, const std::string& message) {
  try {
    try {
      throw original;
    } catch (...) {
      qorin::rethrowMessage(message);
    }
  } catch (const ForeignError& caught) {
    return caught.text;
  } catch (const qorin::MoreInfoForException& caught) {
    return caught.fullMessage();
  }
}

template <typename E>
std::string reportedText(const E& original) {
  try {
    throw original;
  } catch (...) {
    return qorin::getExceptionMessage("", "");
  }
}

TEST(ExceptionHandlers, AreOfferedTheRethrowNewestFirstUntilOneThrows) {
  Log log;
  ForeignHandler older("older", log);
  ForeignHandler newer("newer", log);
  older.takesOver = true;
  EXPECT_EQ(rethrownText(ForeignError{"bad pin"}, "Loading"), "Loading (older): bad pin");
  EXPECT_EQ(log, (Log{"newer.handleRethrow", "older.handleRethrow"}));

  newer.takesOver = true;
  log.clear();
  EXPECT_EQ(rethrownText(ForeignError{"bad pin"}, "Loading"), "Loading (newer): bad pin");
  EXPECT_EQ(log, Log{"newer.handleRethrow"});

  // Standard exceptions are offered before they are wrapped; exceptions that
  // already carry context are not offered.
  log.clear();
  EXPECT_EQ(rethrownText(std::out_of_range("idx"), "m"), "m: idx");
  EXPECT_EQ(rethrownText(qorin::MoreInfoForException("idx"), "m"), "m: idx");
  EXPECT_EQ(log, (Log{"newer.handleRethrow", "older.handleRethrow"}));
}

TEST(ExceptionHandlers, DescribeExceptionsWithoutContextFirstNonEmptyWins) {
  Log log;
  ForeignHandler older("older", log);
  ForeignHandler newer("newer", log);
  {
    ForeignHandler gone("gone", log);
    const ForeignHandler copy(older);  // copies are not registered
  }
  const ForeignError foreign{"x"};
  const std::runtime_error standard("what");

  EXPECT_EQ(reportedText(foreign), "Unknown exception encountered.");
  EXPECT_EQ(reportedText(standard), "what");
  EXPECT_EQ(log, (Log{"newer.describe", "older.describe", "newer.describe", "older.describe"}));
  older.description = "from older";
  EXPECT_EQ(reportedText(foreign), "from older");
  newer.description = "from newer";
  log.clear();
  EXPECT_EQ(reportedText(foreign), "from newer");
  EXPECT_EQ(log, Log{"newer.describe"});

  // A standard exception's what() yields to a handler; a fullMessage() does not.
  EXPECT_EQ(reportedText(standard), "from newer");
  EXPECT_EQ(reportedText(qorin::MoreInfoForException("context")), "context");
}

}  // namespace
