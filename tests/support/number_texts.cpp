#include "support/number_texts.h"

#include <cstring>
#include <iterator>

namespace qorin::testing {

namespace {

template <std::size_t N>
const char* pick(std::mt19937_64& rng, const char* const (&choices)[N]) {
  return choices[std::uniform_int_distribution<std::size_t>(0, N - 1)(rng)];
}

std::string digits(std::mt19937_64& rng, int max_count, const char* alphabet) {
  std::string text;
  const int count = std::uniform_int_distribution<int>(0, max_count)(rng);
  const std::size_t size = std::strlen(alphabet);
  for (int i = 0; i < count; ++i) text += alphabet[std::uniform_int_distribution<std::size_t>(0, size - 1)(rng)];
  return text;
}

// A number built along the grammar, with a deliberate fault now and then.
std::string structured(std::mt19937_64& rng) {
  static const char* const kLead[] = {"", "", "", " ", "\t", " \t ", "\n", "\v", "\r"};
  static const char* const kSign[] = {"", "", "-", "+", "+-", "--"};
  static const char* const kMantissa[] = {"0123456789", "0001", "9", "49", "0"};
  static const char* const kExponent[] = {"", "", "e", "E+", "e-", "e3", "e-3", "e308", "e309", "e-307",
                                          "e-308", "e-320", "e-324", "e-330", "e-400", "e+400", "e99999999999"};
  static const char* const kTail[] = {"", "", "", " ", "\t", "\n", " \n", "\n\n", "\r\n", "x", " GHz", ",5", "\n "};
  std::string text = std::string(pick(rng, kLead)) + pick(rng, kSign);
  text += digits(rng, 22, pick(rng, kMantissa));
  if (rng() % 2) text += "." + digits(rng, 22, pick(rng, kMantissa));
  text += pick(rng, kExponent);
  if (text.back() == 'e' || text.back() == '+' || text.back() == '-') {
    text += digits(rng, 3, "0123456789");
  }
  return text + pick(rng, kTail);
}

// Pieces glued at random: hex floats, inf, nan and their near misses.
std::string glued(std::mt19937_64& rng) {
  static const char* const kPieces[] = {
      "0x", "0X", "1", "f", "A", "0", ".", "p", "P", "p-", "p+", "1074", "1022", "1075", "1023", "1024",
      "e", "-", "+", " ", "inf", "INF", "inity", "nan", "NaN", "(", ")", "_", "0x7", "12", "99999999999999999999",
      "fffffffffffff", "8", "\n", "x", "z", "2.2250738585072011e-308", "4.9406564584124654e-324"};
  std::string text;
  const int count = std::uniform_int_distribution<int>(1, 8)(rng);
  for (int i = 0; i < count; ++i) text += pick(rng, kPieces);
  return text;
}

}  // namespace

std::string random_number_text(std::mt19937_64& rng) { return rng() % 3 ? structured(rng) : glued(rng); }

double random_double(std::mt19937_64& rng) {
  static const double kRound[] = {0.0, -0.0, 0.1, 0.5, 1.0, 1.5, 2.5, 9.5, 99.5, 1e20, 1e21, 1e-5, 1e-4,
                                  123456.0, 999999.5, 0.000123456, 1e300, 5e-324, 2.2250738585072014e-308};
  std::uint64_t bits = rng();
  switch (rng() % 4) {
    case 0: {
      const double value = kRound[rng() % std::size(kRound)];
      return rng() % 2 ? -value : value;
    }
    case 1:  // exponents around 1, where fixed and general formats round
      bits = (bits & 0x800FFFFFFFFFFFFF) | ((1023 + rng() % 60 - 30) << 52);
      break;
    default:
      break;
  }
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

}  // namespace qorin::testing
