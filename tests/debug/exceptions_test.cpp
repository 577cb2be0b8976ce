// Exceptions are thrown inside the library and caught here, across the
// shared-library boundary, as their standard type and as MoreInfoForException.
#include <qorin/debug.h>

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <ios>
#include <memory>
#include <new>
#include <regex>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeinfo>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

TEST(AddInfo, PrefixesOnceAndKeepsTheDanglingSeparator) {
  struct Case { std::string message, existing, expected; };
  const Case cases[] = {
      {"a", "", "a: "}, {"a", "abc", "abc"}, {"ab", "ab", "ab"}, {"b", "abc", "b: abc"},
      {"", "x", "x"},   {"abcd", "abc", "abcd: abc"},
      // Compared as bytes, not as C strings.
      {std::string("a\0b", 3), std::string("a\0c", 3), std::string("a\0b: a\0c", 8)},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::addInfo(c.message, c.existing), c.expected) << c.message << " / " << c.existing;
  }
}

TEST(ErrorMessages, FramesWithSingleLineFeedsAndNoTrimming) {
  struct Case { const char* text; const char* before; const char* after; const char* expected; };
  const Case cases[] = {{"E", "", "", "E"}, {"E", "B", "A", "B\nE\nA"}, {"", "B", "A", "B\n\nA"},
                        {"E\n", " ", "\n", " \nE\n\n\n"}};
  for (const Case& c : cases) {
    EXPECT_EQ(qorin::errorMessages(c.text, c.before, c.after), c.expected) << c.expected;
  }
}

TEST(MoreInfoForException, KeepsInnermostFirstAndJoinsOutermostFirst) {
  qorin::MoreInfoForException e("outer", "inner");
  e.addMessage("outer");  // already the prefix: the text stays, the list still grows
  EXPECT_EQ(e.fullMessage(), "outer: inner");
  EXPECT_EQ(e.getMessages(), (Strings{"inner", "outer", "outer"}));
}

// Throws `original` out through two catch blocks that add "m", then "n".
template <typename E>
[[noreturn]] void throwWithContext(const E& original) {
  try {
    try {
      throw original;
    } catch (...) {
      qorin::rethrowMessage("m");
    }
  } catch (...) {
    qorin::rethrowMessage("n");
  }
}

// `original` must come back catchable as its own exact type T, not only as
// one of T's bases: that is what a careless matching order would break (the
// exception then escapes, named by its what()).
template <typename T>
void expectKeepsItsType(const T& original) {
  SCOPED_TRACE(typeid(T).name());
  const std::string what = original.what();
  try {
    throwWithContext(original);
  } catch (const T& caught) {
    EXPECT_EQ(caught.what(), what);
    const auto& more = dynamic_cast<const qorin::MoreInfoForException&>(caught);
    EXPECT_EQ(more.getMessages(), (Strings{what, "m", "n"}));
    EXPECT_EQ(more.fullMessage(), "n: m: " + what);
  }
}

TEST(RethrowMessage, KeepsTheMostDerivedStandardType) {
  const auto expectEach = [](const auto&... originals) { (expectKeepsItsType(originals), ...); };
  expectEach(std::invalid_argument("invalid"), std::domain_error("domain"), std::length_error("length"),
             std::out_of_range("out of range"), std::future_error(std::future_errc::broken_promise),
             std::logic_error("logic"), std::ios_base::failure("stream"), std::range_error("range"),
             std::overflow_error("overflow"), std::underflow_error("underflow"),
             std::regex_error(std::regex_constants::error_paren),
             std::system_error(std::make_error_code(std::errc::io_error), "system"), std::runtime_error("runtime"),
             std::bad_typeid(), std::bad_cast(), std::bad_weak_ptr(), std::bad_function_call(),
             std::bad_array_new_length(), std::bad_alloc(), std::bad_exception(), std::exception());
}

// Types the library cannot know: a standard one it cannot re-create and a
// foreign one, as a host program might have.
struct OwnText : std::exception {
  const char* what() const noexcept override { return "own text"; }
};
struct ForeignError {};

// When `answers`, takes over every rethrow and describes every exception,
// each time by its name.
struct NamedHandler : qorin::ExceptionHandlerBase {
  explicit NamedHandler(std::string label) : name(std::move(label)) {}
  void handleRethrow(const std::string& message) override {
    if (answers) throw qorin::MoreInfoForException(message + " by " + name);
  }
  std::string describeCurrentException() override { return answers ? name : ""; }

  std::string name;
  bool answers = false;
};

// The report text of `original`, thrown out through throwWithContext when
// `withContext`.
template <typename E>
std::string reported(const E& original, bool withContext = true) {
  try {
    if (withContext) throwWithContext(original);
    throw original;
  } catch (...) {
    return qorin::getExceptionMessage("", "");
  }
}

TEST(ExceptionHandlers, AreAskedNewestFirstUntilOneAnswers) {
  NamedHandler older("older");
  NamedHandler newer("newer");
  NamedHandler("gone");  // registered and unregistered at once

  // Unanswered: a foreign exception passes unchanged and unnamed; a standard
  // one keeps its own text.
  EXPECT_EQ(reported(ForeignError()), "Unknown exception encountered.");
  EXPECT_EQ(reported(OwnText()), "n: m: own text");
  EXPECT_EQ(reported(std::out_of_range("idx"), false), "idx");

  older.answers = true;
  NamedHandler copy(older);  // copies are not registered
  copy.name = "copy";
  EXPECT_EQ(reported(ForeignError()), "n: m by older");
  EXPECT_EQ(reported(std::out_of_range("idx"), false), "older");

  // Standard exceptions are offered before they are wrapped; exceptions that
  // carry context are neither offered nor described.
  newer.answers = true;
  EXPECT_EQ(reported(std::out_of_range("idx")), "n: m by newer");
  EXPECT_EQ(reported(ForeignError(), false), "newer");
  EXPECT_EQ(reported(qorin::MoreInfoForException("idx")), "n: m: idx");
  EXPECT_EQ(reported(qorin::MoreInfoForException("idx"), false), "idx");
}

TEST(SystemErrorString, IsTheSystemsOwnTextUntrimmed) {
  const std::string text = qorin::get_system_error_string(2);
  if (sizeof(wchar_t) == 2) {  // Windows: the message table's text, its line break kept
    ASSERT_GT(text.size(), 2u);
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n");
  } else {
    EXPECT_EQ(text, "No such file or directory");
  }
}

}  // namespace
