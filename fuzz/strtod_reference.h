// glibc's strtod as the reference for the prefix family, with its one
// known error set apart. Header-only, so the fuzz targets share it.
//
// glibc 2.36 (Debian 12), and older, drops the bit just below the kept ones
// when it shifts a hex float into the subnormal range: it reads
// "0x1.00000000000018p-1023" as 0x0.8p-1022 (correct: 0x0.8000000000001p-1022)
// and "0x1.00000000000008p-1023" without ERANGE. Later glibc rounds these
// once, as the library does; tests pin the correct answers in tables.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace qorin::testing {

// Whether strtod's reading of `text` (value `theirs`) may be that error:
// a hex float that lands at or below DBL_MIN on a glibc that has it.
inline bool known_strtod_error(const char* text, double theirs) {
  static const bool misrounds = std::strtod("0x1.00000000000018p-1023", nullptr) == 0x1p-1023;
  if (!misrounds || std::fabs(theirs) > DBL_MIN) return false;
  while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
  if (*text == '+' || *text == '-') ++text;
  return text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

}  // namespace qorin::testing
