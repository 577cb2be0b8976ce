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
    const auto& more = dynamic_cast<const qorin::MoreInfoForException&>(caught);
    EXPECT_EQ(more.getMessages(), (Messages{what, "m"}));
    EXPECT_EQ(more.fullMessage(), "m: " + what);
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

struct OwnText : std::exception {
  const char* what() const noexcept override { return "own text"; }
};

TEST(RethrowMessage, AUserTypeBecomesItsStandardBaseWithItsOwnText) {
  try {
    throwWithContext(OwnText(), "m");
  } catch (const OwnText&) {
    ADD_FAILURE() << "the user type cannot be re-created";
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(caught.fullMessage(), "m: own text");
  }
}

TEST(RethrowMessage, FurtherContextGrowsTheSameObject) {
  const void* first = nullptr;
  try {
    try {
      throwWithContext(std::out_of_range("idx"), "m");
    } catch (const qorin::MoreInfoForException& caught) {
      first = &caught;
      qorin::rethrowMessage("n");
    }
  } catch (const qorin::MoreInfoForException& caught) {
    EXPECT_EQ(&caught, first);
    EXPECT_EQ(caught.fullMessage(), "n: m: idx");
    EXPECT_STREQ(dynamic_cast<const std::out_of_range&>(caught).what(), "idx");
  }
  // A caller's own MoreInfoForException type is kept as well.
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
    EXPECT_EQ(qorin::getExceptionMessage("B", "A"), "B\nUnknown exception encountered.\nA");
  }
}

}  // namespace
