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

using Messages = std::vector<std::string>;

template <typename T>
[[noreturn]] void throwWithContext(const T& original, const std::string& message) {
  try {
    throw original;
  } catch (...) {
    qorin::rethrowMessage(message);
  }
}

// `original` must come back catchable as its own exact type T, not only as
// one of T's bases: that is what a careless matching order would break.
template <typename T>
void expectKeepsItsType(const T& original) {
  SCOPED_TRACE(typeid(T).name());
  const std::string what = original.what();
  try {
    throwWithContext(original, "m");
  } catch (const T& caught) {
    EXPECT_EQ(caught.what(), what);
    const auto* more = dynamic_cast<const qorin::MoreInfoForException*>(&caught);
    ASSERT_NE(more, nullptr);
    EXPECT_EQ(more->fullMessage(), "m: " + what);
    EXPECT_EQ(more->getMessages(), (Messages{what, "m"}));
    return;
  } catch (...) {
  }
  ADD_FAILURE() << "not caught as its own type";
}

TEST(RethrowMessage, KeepsTheMostDerivedStandardType) {
  expectKeepsItsType(std::invalid_argument("invalid"));
  expectKeepsItsType(std::domain_error("domain"));
  expectKeepsItsType(std::length_error("length"));
  expectKeepsItsType(std::out_of_range("range"));
  expectKeepsItsType(std::future_error(std::future_errc::broken_promise));
  expectKeepsItsType(std::logic_error("logic"));
  expectKeepsItsType(std::ios_base::failure("stream"));
  expectKeepsItsType(std::range_error("range"));
  expectKeepsItsType(std::overflow_error("overflow"));
  expectKeepsItsType(std::underflow_error("underflow"));
  expectKeepsItsType(std::regex_error(std::regex_constants::error_paren));
  expectKeepsItsType(std::system_error(std::make_error_code(std::errc::io_error), "system"));
  expectKeepsItsType(std::runtime_error("runtime"));
  expectKeepsItsType(std::bad_typeid());
  expectKeepsItsType(std::bad_cast());
  expectKeepsItsType(std::bad_weak_ptr());
  expectKeepsItsType(std::bad_function_call());
  expectKeepsItsType(std::bad_array_new_length());
  expectKeepsItsType(std::bad_alloc());
  expectKeepsItsType(std::bad_exception());
  expectKeepsItsType(std::exception());
}

struct DiskFull : std::runtime_error {
  DiskFull() : std::runtime_error("disk full") {}
};

struct OwnText : std::exception {
  const char* what() const noexcept override { return "own text"; }
};

TEST(RethrowMessage, AUserTypeBecomesItsNearestStandardBase) {
  try {
    throwWithContext(DiskFull(), "Saving");
  } catch (const DiskFull&) {
    ADD_FAILURE() << "the user type cannot be re-created";
  } catch (const std::runtime_error& caught) {
    EXPECT_STREQ(caught.what(), "disk full");
    EXPECT_EQ(dynamic_cast<const qorin::MoreInfoForException&>(caught).fullMessage(),
              "Saving: disk full");
  }
  // The context starts from the caught object's own what(), not its copy's.
  try {
    throwWithContext(OwnText(), "m");
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(caught.fullMessage(), "m: own text");
    EXPECT_NE(dynamic_cast<const std::exception*>(&caught), nullptr);
  }
}

TEST(RethrowMessage, ASecondContextGrowsTheSameObject) {
  const void* first = nullptr;
  try {
    try {
      try {
        throw std::out_of_range("idx");
      } catch (...) {
        qorin::rethrowMessage("m");
      }
    } catch (const qorin::MoreInfoForException& caught) {
      first = &caught;
      qorin::rethrowMessage("n");
    }
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(&caught, first);
    EXPECT_EQ(caught.fullMessage(), "n: m: idx");
    EXPECT_EQ(caught.getMessages(), (Messages{"idx", "m", "n"}));
    EXPECT_STREQ(dynamic_cast<const std::out_of_range&>(caught).what(), "idx");
  }
}

TEST(RethrowMessage, RepeatedContextIsNotPrefixedTwice) {
  try {
    throwWithContext(std::runtime_error("Saving: disk full"), "Saving");
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(caught.fullMessage(), "Saving: disk full");
    EXPECT_EQ(caught.getMessages(), (Messages{"Saving: disk full", "Saving"}));
  }
}

TEST(RethrowMessage, AMoreInfoForExceptionOfTheCallerKeepsItsType) {
  struct CallerError : std::runtime_error, qorin::MoreInfoForException {
    CallerError() : std::runtime_error("caller"), qorin::MoreInfoForException("caller") {}
  };
  try {
    throwWithContext(CallerError(), "m");
  } catch (const CallerError& caught) {
    EXPECT_EQ(caught.fullMessage(), "m: caller");
  }
}

TEST(RethrowMessage, AnUnknownExceptionPassesUnchanged) {
  try {
    throwWithContext(42, "lost");
  } catch (int caught) {
    EXPECT_EQ(caught, 42);
  }
  try {
    throwWithContext(42, "lost");
  } catch (...) {
    EXPECT_EQ(qorin::getExceptionMessage("", ""), "Unknown exception encountered.");
    EXPECT_EQ(qorin::getExceptionMessage("B", "A"), "B\nUnknown exception encountered.\nA");
  }
}

TEST(GetExceptionMessage, UsesTheFullMessageOrWhat) {
  try {
    throw std::runtime_error("disk full");
  } catch (...) {
    EXPECT_EQ(qorin::getExceptionMessage("Saving design", ""), "Saving design\ndisk full");
  }
  try {
    throw qorin::MoreInfoForException("outer", "inner");
  } catch (...) {
    EXPECT_EQ(qorin::getExceptionMessage("", "A"), "outer: inner\nA");
  }
}

}  // namespace
