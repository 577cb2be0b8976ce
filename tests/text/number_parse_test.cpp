// Text to numbers. The validated family: the strict grammar over the whole
// text, then atof's value. The prefix family: whatever prefix strtod reads in
// the "C" locale, on every platform, with errno deciding range errors.
#include <qorin/text.h>

#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

using qorin::testing::thrown_message;

TEST(NumberParse, GrammarDecidesNumbersAndIntegers) {
  struct Row { std::string text; bool number, integer; };
  const Row rows[] = {
      {"", false, false},       {"   ", false, false},      {"+", false, false},      {" -", false, false},
      {"-5", true, true},       {"+7", true, true},         {"-0", true, true},       {"5.", true, false},
      {".5", true, false},      {"+.5", true, false},       {".", false, false},      {"-.", false, false},
      {"1e", false, false},     {"1e+", false, false},      {"1E-3", true, false},    {"1e3", true, false},
      {"1.5e3 ", true, false},  {"1.5\n", true, false},     {"1.5\n\n", false, false}, {"1.5\r\n", false, false},
      {" \t7", true, true},     {" 42\t", true, true},      {"42\n", true, true},     {"42 \t\n", true, true},
      {"42\n ", false, false},  {"\n42", false, false},     {"\v1", false, false},    {"0x10", false, false},
      {"1,5", false, false},    {"inf", false, false},      {"nan", false, false},    {"4.0", true, false},
      {"4 2", false, false},    {"42 x", false, false},     {"3 GHz", false, false},  {"+-5", false, false},
      {"--5", false, false},    {"1e5.5", false, false},    {".e5", false, false},    {"5.e5", true, false},
      {"1_000", false, false},  {std::string("1\0", 2), false, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(qorin::isValidNumber(row.text), row.number) << '"' << row.text << '"';
    EXPECT_EQ(qorin::isValidInt(row.text), row.integer) << '"' << row.text << '"';
  }
}

// One text through a nothrow/or_throw pair: the value and ok = true, or 0,
// ok = false and the one message, whatever went wrong.
template <class T>
void expect_pair(T (*nothrow)(const std::string&, bool*), T (*or_throw)(const std::string&), const std::string& text,
                 bool ok, T value) {
  SCOPED_TRACE('"' + text + '"');
  bool reported = !ok;
  EXPECT_EQ(nothrow(text, &reported), ok ? value : T{});
  EXPECT_EQ(reported, ok);
  if (ok) {
    EXPECT_EQ(or_throw(text), value);
  } else {
    EXPECT_EQ(thrown_message<std::runtime_error>([&] { or_throw(text); }),
              "Expected a string containing a number");
  }
}

// The grammar is the only check: beyond the double range is an infinity or
// zero, not an error.
TEST(NumberParse, DoublesNeedTheWholeText) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Row { const char* text; bool ok; double value; };
  const Row rows[] = {
      {" -2.5\n", true, -2.5}, {"+.5", true, 0.5}, {"0.1", true, 0.1}, {"1e999", true, inf}, {"-1e999", true, -inf},
      {"1e-999", true, 0.0},   {"2.2250738585072011e-308", true, 2.2250738585072009e-308},
      {"123456789012345678901234567890", true, 1.2345678901234568e29},  {"12abc", false, 0}, {"3 GHz", false, 0},
  };
  for (const Row& row : rows) {
    expect_pair(qorin::toDouble_nothrow, qorin::toDouble_or_throw, row.text, row.ok, row.value);
  }
  EXPECT_TRUE(std::signbit(qorin::toDouble_nothrow("-0")));
}

// Rounded half away from zero after the range test on the unrounded value;
// unsigned values from 2^31 up come back as their 32-bit pattern.
TEST(NumberParse, IntsRoundHalfAwayFromZeroAfterTheRangeTest) {
  struct Row { const char* text; bool ok; int value; };
  const Row ints[] = {
      {"2.5", true, 3},   {"-2.5", true, -3}, {"2.4999", true, 2}, {"1e3", true, 1000}, {"-0.4", true, 0},
      {" 7\n", true, 7},  {"3e9", false, 0},  {"1e999", false, 0}, {"inf", false, 0},  {"", false, 0},
      {"2147483647.4", true, 2147483647},    {"2147483647.5", false, 0},
      {"-2147483648.4", true, -2147483647 - 1}, {"-2147483648.5", false, 0},
  };
  for (const Row& row : ints) expect_pair(qorin::toInt_nothrow, qorin::toInt_or_throw, row.text, row.ok, row.value);
  const Row unsigneds[] = {
      {"4294967295", true, -1}, {"4294967295.4", true, -1}, {"4294967295.5", false, 0}, {"0.5", true, 1},
      {"2147483648", true, -2147483647 - 1}, {"-0", true, 0}, {"-0.4", false, 0}, {"-1", false, 0}, {"x", false, 0},
  };
  for (const Row& row : unsigneds) {
    expect_pair(qorin::toUnsignedInt_nothrow, qorin::toUnsignedInt_or_throw, row.text, row.ok, row.value);
  }
}

std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

// Signalling NaNs, which no conversion yields: "nothing converted" and "range error".
constexpr std::uint64_t kFail = 0x7FF0DEAD00000001;
constexpr std::uint64_t kRange = 0x7FF0DEAD00000002;

TEST(NumberParse, PrefixFamilyAcceptsWhatCStrtodAccepts) {
  struct Row { std::string text; std::uint64_t bits; };
  const Row rows[] = {
      {"12abc", bits_of(12)}, {"3 GHz", bits_of(3)}, {" \t\n\v\f\r1.5", bits_of(1.5)}, {"1e+", bits_of(1)},
      {"abc", kFail}, {"", kFail}, {"-", kFail}, {"+.e5", kFail}, {std::string("7\0" "1", 3), bits_of(7)},
      {"-0x", bits_of(-0.0)}, {"0x.p1", bits_of(0)}, {"0x1.8p1", bits_of(3)}, {"0X.8", bits_of(0.5)},
      {"0x1p", bits_of(1)}, {"0x1P-2x", bits_of(0.25)}, {"0xA.", bits_of(10)},
      // Hex digits beyond the 53 bits round to nearest, ties to even.
      {"0x1.fffffffffffff8p0", bits_of(2)}, {"0x1.00000000000008p0", bits_of(1)},
      {"0x1.000000000000081p0", 0x3FF0000000000001},
      {"inf", bits_of(HUGE_VAL)}, {"-Infinity", bits_of(-HUGE_VAL)}, {"infinit", bits_of(HUGE_VAL)},
      // The number in "nan(...)" is read as strtoull base 0 reads it, and only when it fills the parentheses.
      {"nan", 0x7FF8000000000000}, {"-NaN", 0xFFF8000000000000}, {"nan(0x7)", 0x7FF8000000000007},
      {"nan(012)", 0x7FF800000000000A}, {"nan(08)", 0x7FF8000000000000}, {"nan(abc", 0x7FF8000000000000},
      {"nan()", 0x7FF8000000000000}, {"nan(0x)", 0x7FF8000000000000}, {"nan(99999999999999999999)", kRange},
      // Underflow is a range error like overflow.
      {"1e999", kRange}, {"-1e999", kRange}, {"1e-400", kRange}, {"0e-400", bits_of(0)}, {"0x1p1024", kRange},
      {"0x1.fffffffffffffp1023", 0x7FEFFFFFFFFFFFFF}, {"0x1p-1074", 1}, {"0x1.8p-1074", kRange},
      {"0x1p-1075", kRange}, {"0x0p99999999999", bits_of(0)}, {"1e99999999999999999999", kRange},
      // Rounded once into the subnormal range (glibc 2.36 drops the bit after the kept ones).
      {"0x1.00000000000018p-1023", kRange}, {"0x1.00000000000008p-1023", kRange},
      {"0x1.0000000000000cp-1024", kRange}, {"0x1.6fa6e65b5782ep-1023", 0x000B7D3732DABC17},
      // Tininess is judged after rounding: both give DBL_MIN, only one is tiny.
      {"0x1.fffffffffffff8p-1023", 0x0010000000000000}, {"0x1.fffffffffffffp-1023", kRange},
      {"2.2250738585072013e-308", 0x0010000000000000}, {"2.2250738585072012e-308", kRange},
      {"2.2250738585072011e-308", kRange}, {"4.9406564584124654e-324", kRange},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE('"' + row.text + '"');
    errno = EDOM;
    const std::optional<double> value = qorin::toDouble_only(row.text);
    const int error = errno;
    EXPECT_EQ(error, row.bits == kRange ? ERANGE : 0);
    EXPECT_EQ(value ? bits_of(*value) : error == ERANGE ? kRange : kFail, row.bits);

    bool ok = !value;
    EXPECT_EQ(bits_of(qorin::toDouble_only_no_throw(row.text, &ok)), value ? bits_of(*value) : 0);
    EXPECT_EQ(ok, value.has_value());
    const auto or_throw = [&] { return qorin::toDouble_only_or_throw(row.text); };
    if (row.bits == kRange) {
      EXPECT_EQ(thrown_message<std::out_of_range>(or_throw), "Out of range for a double");
    } else if (row.bits == kFail) {
      EXPECT_EQ(thrown_message<std::runtime_error>(or_throw), "Expected a string containing a double");
    } else {
      EXPECT_NO_THROW(EXPECT_EQ(bits_of(or_throw()), row.bits));
    }
  }
}

}  // namespace
