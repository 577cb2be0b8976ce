#include <qorin/text.h>

#include "support/number_texts.h"
#include "support/strtod_reference.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

std::uint64_t bits_of(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

// Signalling NaNs, which no conversion yields: "no value" and "range error".
constexpr std::uint64_t kFail = 0x7FF0DEAD00000001;
constexpr std::uint64_t kRange = 0x7FF0DEAD00000002;

// Value bits or kFail/kRange, and errno afterwards: the same on every
// platform, whatever its own strtod does.
TEST(NumberPrefix, AcceptsWhatCStrtodAccepts) {
  struct Case { std::string text; std::uint64_t bits; };
  const Case cases[] = {
      {"12abc", bits_of(12)},            {"3 GHz", bits_of(3)},             {" \t\n\v\f\r1.5", bits_of(1.5)},
      {"abc", kFail},                    {"", kFail},                       {".", kFail},
      {"-", kFail},                      {"+.e5", kFail},                   {"1e+", bits_of(1)},
      {"0x", bits_of(0)},                {"-0x", bits_of(-0.0)},            {"0x.p1", bits_of(0)},
      {"0x1.8p1", bits_of(3)},           {"0X.8", bits_of(0.5)},            {"0x1p", bits_of(1)},
      {"0x1P-2x", bits_of(0.25)},        {"0xA.", bits_of(10)},             {"0x1.fffffffffffff8p0", bits_of(2)},
      {"0x1.00000000000008p0", bits_of(1)},                                 {"0x1.000000000000081p0", 0x3FF0000000000001},
      {"inf", bits_of(HUGE_VAL)},        {"-Infinity", bits_of(-HUGE_VAL)}, {"infinit", bits_of(HUGE_VAL)},
      {"nan", 0x7FF8000000000000},       {"-NaN", 0xFFF8000000000000},      {"nan(0x7)", 0x7FF8000000000007},
      {"nan(012)", 0x7FF800000000000A},  {"nan(08)", 0x7FF8000000000000},   {"nan(abc", 0x7FF8000000000000},
      {"nan()", 0x7FF8000000000000},     {"nan(0x)", 0x7FF8000000000000},   {"nan(99999999999999999999)", kRange},
      {"1e999", kRange},                 {"-1e999", kRange},                {"1e-400", kRange},
      {"0e-400", bits_of(0)},            {"0x1p1024", kRange},              {"0x1.fffffffffffffp1023", 0x7FEFFFFFFFFFFFFF},
      {"0x1p-1074", 1},                  {"0x1.8p-1074", kRange},           {"0x1p-1075", kRange},
      // Rounded once into the subnormal range (glibc 2.36 drops the bit after the kept ones).
      {"0x1.00000000000018p-1023", kRange},                                 {"0x1.00000000000008p-1023", kRange},
      {"0x1.0000000000000cp-1024", kRange},                                 {"0x1.6fa6e65b5782ep-1023", 0x000B7D3732DABC17},
      {"0x0p99999999999", bits_of(0)},   {"1e99999999999999999999", kRange},
      // Tininess is judged after rounding: both give DBL_MIN, only one is tiny.
      {"0x1.fffffffffffff8p-1023", 0x0010000000000000},                     {"0x1.fffffffffffffp-1023", kRange},
      {"2.2250738585072011e-308", kRange},                                  {"4.9406564584124654e-324", kRange},
      {"2.2250738585072013e-308", 0x0010000000000000},                      {"2.2250738585072012e-308", kRange},
      {std::string("7\0" "1", 3), bits_of(7)},
  };
  for (const Case& c : cases) {
    errno = EDOM;
    const std::optional<double> value = qorin::toDouble_only(c.text);
    const int error = errno;
    if (c.bits == kFail || c.bits == kRange) {
      EXPECT_FALSE(value) << '"' << c.text << "\" gave " << *value;
      EXPECT_EQ(error, c.bits == kRange ? ERANGE : 0) << c.text;
    } else {
      ASSERT_TRUE(value) << c.text;
      EXPECT_EQ(bits_of(*value), c.bits) << '"' << c.text << "\" gave " << *value;
      EXPECT_EQ(error, 0) << c.text;
    }
  }
}

TEST(NumberPrefix, VariantsReportTheSameOutcome) {
  using qorin::testing::thrown_message;
  bool ok = false;
  EXPECT_EQ(qorin::toDouble_only_no_throw("12abc", &ok), 12.0);
  EXPECT_TRUE(ok);
  EXPECT_EQ(qorin::toDouble_only_no_throw("1e-400", &ok), 0.0);
  EXPECT_FALSE(ok);
  EXPECT_EQ(qorin::toDouble_only_or_throw(" -0x10"), -16.0);
  EXPECT_EQ(thrown_message<std::out_of_range>([] { qorin::toDouble_only_or_throw("1e999"); }),
            "Out of range for a double");
  EXPECT_EQ(thrown_message<std::runtime_error>([] { qorin::toDouble_only_or_throw(" "); }),
            "Expected a string containing a double");
}

#ifdef __GLIBC__
// Exact decimal images of tiny doubles: glibc reports no underflow for
// them, but does once a far digit is changed.
std::string exact_decimal(double x) {
  char text[900];
  std::snprintf(text, sizeof text, "%.800e", x);
  return text;
}

TEST(NumberPrefix, EqualsGlibcStrtodWithErrno) {
  std::mt19937_64 rng(7);
  std::vector<std::string> texts;
  for (int i = 0; i < 200000; ++i) texts.push_back(qorin::testing::random_number_text(rng));
  for (int i = 0; i < 300; ++i) {
    const double tiny = std::ldexp(static_cast<double>(rng() % (std::uint64_t{1} << 53)), -1074 - int(rng() % 3));
    std::string text = exact_decimal(tiny);
    texts.push_back(text);
    text[2 + rng() % 700] = '9';  // may or may not change the digit
    texts.push_back(text);
  }
  // The tininess threshold (2^54 - 1) * 2^-1076 and its neighbours, which long double holds.
  for (long double offset : {0.0L, 0x1p-63L, -0x1p-63L}) {
    char threshold[900];
    std::snprintf(threshold, sizeof threshold, "%.800Le", std::ldexp(1.0L - 0x1p-54L + offset, -1022));
    texts.push_back(threshold);
  }
  for (const std::string& text : texts) {
    errno = 0;
    char* end = nullptr;
    const double theirs = std::strtod(text.c_str(), &end);
    const int their_errno = errno;
    const bool converted = their_errno == 0 && end != text.c_str();
    if (qorin::testing::known_strtod_error(text.c_str(), theirs)) continue;
    errno = 0;
    const std::optional<double> ours = qorin::toDouble_only(text);
    ASSERT_EQ(errno, their_errno) << '"' << text << '"';
    ASSERT_EQ(ours.has_value(), converted) << '"' << text << '"';
    if (converted) {
      ASSERT_EQ(bits_of(*ours), bits_of(theirs)) << '"' << text << '"';
    }
  }
}
#endif

#if defined(__GLIBC__) && LDBL_MANT_DIG == 64
// Hex floats around the subnormal range against a reference that rounds
// once: long double holds up to 16 hex digits exactly at these exponents,
// and the hardware rounds it to double correctly.
TEST(NumberPrefix, HexFloatsRoundOnceIntoTheSubnormalRange) {
  std::mt19937_64 rng(5);
  const long double tiny_below = std::ldexp(1.0L - 0x1p-54L, -1022);
  for (int i = 0; i < 100000; ++i) {
    char text[64];
    std::snprintf(text, sizeof text, "0x%llxp%d", static_cast<unsigned long long>(rng() >> (rng() % 64)),
                  -1140 + static_cast<int>(rng() % 130));
    const long double exact = std::strtold(text, nullptr);
    const double rounded = static_cast<double>(exact);
    const bool underflow = static_cast<long double>(rounded) != exact && exact < tiny_below;
    errno = 0;
    const std::optional<double> ours = qorin::toDouble_only(text);
    ASSERT_EQ(errno, underflow ? ERANGE : 0) << text;
    ASSERT_EQ(ours.has_value(), !underflow) << text;
    if (ours) {
      ASSERT_EQ(bits_of(*ours), bits_of(rounded)) << text;
    }
  }
}
#endif

}  // namespace
