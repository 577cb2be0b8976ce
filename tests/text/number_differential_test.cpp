// The library against glibc, whose strtod and printf round correctly: bit
// for bit and errno for errno in the "C" locale, on random texts and doubles.
#include <qorin/text.h>

#include "support/strtod_reference.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#ifdef __GLIBC__
namespace {

using Rng = std::mt19937_64;

// Up to `max` characters drawn from `alphabet`.
std::string run_of(Rng& rng, std::size_t max, const std::string& alphabet) {
  std::string text(rng() % (max + 1), ' ');
  for (char& c : text) c = alphabet[rng() % alphabet.size()];
  return text;
}

// Mostly numbers built along the grammar with a fault now and then (a stray
// sign, a missing exponent digit, trailing text), values at the edges of the
// double range among them; else pieces glued at random: hex floats, inf, nan
// and their near misses.
std::string random_number_text(Rng& rng) {
  static const char* const kLead[] = {"", "", "", " ", "\t", " \t ", "\n", "\v", "\r"};
  static const char* const kSign[] = {"", "", "-", "+", "+-", "--"};
  static const char* const kDigits[] = {"0123456789", "0001", "9", "49", "0"};
  static const char* const kExponent[] = {"", "", "e", "E+", "e-", "e3", "e-3", "e308", "e309", "e-307",
                                          "e-308", "e-320", "e-324", "e-330", "e-400", "e+400", "e99999999999"};
  static const char* const kTail[] = {"", "", "", " ", "\t", "\n", " \n", "\n\n", "\r\n", "x", " GHz", ",5", "\n "};
  static const char* const kPieces[] = {
      "0x", "0X", "1", "f", "A", "0", ".", "p", "P", "p-", "p+", "1074", "1022", "1075", "1023", "1024",
      "e", "-", "+", " ", "inf", "INF", "inity", "nan", "NaN", "(", ")", "_", "0x7", "12", "99999999999999999999",
      "fffffffffffff", "8", "\n", "x", "z", "2.2250738585072011e-308", "4.9406564584124654e-324"};
  const auto pick = [&rng](const auto& choices) { return choices[rng() % std::size(choices)]; };
  std::string text;
  if (rng() % 3 == 0) {
    for (auto count = 1 + rng() % 8; count > 0; --count) text += pick(kPieces);
    return text;
  }
  text = std::string(pick(kLead)) + pick(kSign) + run_of(rng, 22, pick(kDigits));
  if (rng() % 2) text += "." + run_of(rng, 22, pick(kDigits));
  text += pick(kExponent);
  if (!text.empty() && std::strchr("e+-", text.back())) text += run_of(rng, 3, "0123456789");
  return text + pick(kTail);
}

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// All the digits of a double or a long double near the subnormals.
std::string exact_decimal(long double x) {
  char text[900];
  std::snprintf(text, sizeof text, "%.800Le", x);
  return text;
}

TEST(NumberDifferential, BothFamiliesEqualGlibcStrtod) {
  Rng rng(7);
  std::vector<std::string> texts;
  for (int i = 0; i < 200000; ++i) texts.push_back(random_number_text(rng));
  // Exact images of tiny doubles: glibc reports no underflow for them, but
  // does once a far digit changes.
  for (int i = 0; i < 300; ++i) {
    std::string text = exact_decimal(std::ldexp(static_cast<double>(rng() >> 11), -1074 - static_cast<int>(rng() % 3)));
    texts.push_back(text);
    text[2 + rng() % 700] = '9';  // may or may not change the digit
    texts.push_back(text);
    // Exactly halfway between two subnormals: rounds to even, inexact.
    texts.push_back(exact_decimal(std::ldexp(static_cast<long double>((rng() >> 12) | 1), -1075)));
  }
  // The tininess threshold (2^54 - 1) * 2^-1076 and its neighbours, which long double holds.
  for (long double offset : {0.0L, 0x1p-63L, -0x1p-63L}) {
    texts.push_back(exact_decimal(std::ldexp(1.0L - 0x1p-54L + offset, -1022)));
  }
  int valid = 0;
  for (const std::string& text : texts) {
    errno = 0;
    char* end = nullptr;
    const double theirs = std::strtod(text.c_str(), &end);
    const int their_errno = errno;
    const bool number = qorin::isValidNumber(text);
    ASSERT_TRUE(number || !qorin::isValidInt(text)) << '"' << text << '"';
    if (number) {
      ++valid;
      ASSERT_TRUE(same_bits(qorin::toDouble_nothrow(text), theirs)) << '"' << text << '"';
    }
    if (qorin::testing::known_strtod_error(text.c_str(), theirs)) continue;
    errno = 0;
    const std::optional<double> ours = qorin::toDouble_only(text);
    ASSERT_EQ(errno, their_errno) << '"' << text << '"';
    const bool converted = their_errno == 0 && end != text.c_str();
    ASSERT_EQ(ours.has_value(), converted) << '"' << text << '"';
    ASSERT_TRUE(!converted || same_bits(*ours, theirs)) << '"' << text << '"';
  }
  EXPECT_GT(valid, 20000);  // the generator must reach the valid side
}

// Random bits, and the random texts read as doubles: NaNs of either sign,
// subnormals, values at the double range's ends and long digit runs around 1,
// where 'f' and 'g' round.
TEST(NumberDifferential, FromDoubleEqualsGlibcSnprintf) {
  Rng rng(99);
  for (int i = 0; i < 8000; ++i) {
    const std::uint64_t bits = rng();
    double x;
    std::memcpy(&x, &bits, sizeof x);
    if (i % 2) x = std::strtod(random_number_text(rng).c_str(), nullptr);
    for (char format : {'e', 'E', 'f', 'g', 'G'}) {
      const char printf_format[] = {'%', '.', '*', format, '\0'};
      for (int precision = 0; precision <= 20; ++precision) {
        char expected[400];
        std::snprintf(expected, sizeof expected, printf_format, precision, x);
        ASSERT_EQ(qorin::fromDouble(x, static_cast<qorin::DoubleFormat>(format), precision, 0), expected)
            << printf_format << " with precision " << precision;
      }
    }
  }
}

#if LDBL_MANT_DIG == 64
// glibc 2.36 misrounds these (see strtod_reference.h), so the reference is
// long double instead: it holds up to 16 hex digits exactly at these
// exponents, and the hardware rounds it to double once.
TEST(NumberDifferential, SubnormalHexFloatsEqualALongDoubleReference) {
  Rng rng(5);
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
    ASSERT_TRUE(!ours || same_bits(*ours, rounded)) << text;
  }
}
#endif

}  // namespace
#endif
