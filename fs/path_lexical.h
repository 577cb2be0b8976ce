// The lexical path algorithms, written once over any code unit type: UTF-8
// bytes for the public text functions and for Path on POSIX, UTF-16 units for
// Path on Windows. Separators, "." and ":" are ASCII, so they are found the
// same way in every encoding; only comparison needs to know the encoding.
#pragma once

#include "fs/upper_case.h"

#include <qorin/fs.h>

#include <utf8.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace qorin::detail {

template <class C>
using PathView = std::basic_string_view<C>;
template <class C>
using PathText = std::basic_string<C>;

inline bool is_sep(unsigned c, PathStyle style) { return c == '/' || (style == PathStyle::windows && c == '\\'); }
inline char preferred_sep(PathStyle style) { return style == PathStyle::windows ? '\\' : '/'; }

// [0, name_end) is the root name, [name_end, end) the separators after it.
struct RootSpan {
  std::size_t name_end = 0;
  std::size_t end = 0;
};

// "C:" and the like: an ASCII letter and a colon.
template <class C>
bool looks_like_drive(PathView<C> t) {
  return t.size() >= 2 && t[1] == C(':') && (unsigned(t[0]) | 0x20) >= 'a' && (unsigned(t[0]) | 0x20) <= 'z';
}

template <class C>
RootSpan split_root(PathView<C> t, PathStyle style) {
  RootSpan root;
  if (style == PathStyle::windows && t.size() >= 2) {
    if (looks_like_drive(t)) {
      root.name_end = 2;
    } else if (t.size() > 2 && is_sep(t[0], style) && is_sep(t[1], style) && !is_sep(t[2], style)) {
      // "\\server": the name runs to the next separator.
      std::size_t i = 2;
      while (i < t.size() && !is_sep(t[i], style)) ++i;
      root.name_end = i;
    }
  }
  root.end = root.name_end;
  while (root.end < t.size() && is_sep(t[root.end], style)) ++root.end;
  return root;
}

// Calls f(element) for each element after `from`, consecutive separators
// collapsed; a trailing separator gives one empty element.
template <class C, class F>
void for_each_element(PathView<C> t, std::size_t from, PathStyle style, F f) {
  std::size_t i = from;
  while (i < t.size()) {
    std::size_t j = i;
    while (j < t.size() && !is_sep(t[j], style)) ++j;
    f(t.substr(i, j - i));
    if (j == t.size()) return;
    while (j < t.size() && is_sep(t[j], style)) ++j;
    if (j == t.size()) {
      f(PathView<C>());
      return;
    }
    i = j;
  }
}

template <class C>
constexpr C kDotDot[] = {C('.'), C('.'), C(0)};

template <class C>
bool is_dot(PathView<C> e) { return e.size() == 1 && e[0] == C('.'); }
template <class C>
bool is_dot_dot(PathView<C> e) { return e.size() == 2 && e[0] == C('.') && e[1] == C('.'); }

// Whether normalize would leave the text as it is (the common case, kept
// cheap): no doubled separator, no "." next to a separator, no separator of
// the other kind, and no trailing separator or ".".
template <class C>
bool is_plainly_normal(PathView<C> t, PathStyle style) {
  if (t.empty()) return true;
  const C sep = C(preferred_sep(style));
  for (std::size_t i = 0; i < t.size(); ++i) {
    const C c = t[i];
    if (c == C('/') && sep != C('/')) return false;
    if (c == sep && i + 1 < t.size() && (t[i + 1] == sep || t[i + 1] == C('.'))) return false;
    if (c == C('.') && i + 1 < t.size() && t[i + 1] == sep) return false;
  }
  return t.back() != sep && t.back() != C('.');
}

// Appends `element` after `out`, whose first root_end units are its root,
// with a separator unless out is empty, ends in one, or is a drive name.
// A first element that would read as a drive ("b:x") gets ".\" before it,
// so that the text keeps its meaning when parsed again.
template <class C>
void append_element(PathText<C>& out, std::size_t root_end, PathView<C> element, PathStyle style) {
  if (out.empty() && root_end == 0 && style == PathStyle::windows && looks_like_drive(element)) {
    out.push_back(C('.'));
    out.push_back(C('\\'));
  }
  const bool bare_drive = out.size() == 2 && root_end == 2 && out[1] == C(':');
  if (!out.empty() && !is_sep(out.back(), style) && !bare_drive) out.push_back(C(preferred_sep(style)));
  out.append(element);
}

template <class C>
PathText<C> normalize_text(PathView<C> t, PathStyle style) {
  if (is_plainly_normal(t, style)) return PathText<C>(t);
  const RootSpan root = split_root(t, style);
  PathText<C> out(t.substr(0, root.end));
  out.reserve(t.size());
  std::size_t kept = 0;  // the kept elements sit after any leading ".."
  for_each_element(t, root.end, style, [&](PathView<C> e) {
    if (e.empty() || is_dot(e)) return;
    if (is_dot_dot(e) && kept > 0) {
      std::size_t cut = out.size();
      while (cut > root.end && !is_sep(out[cut - 1], style)) --cut;
      if (cut > root.end) --cut;  // the separator before the element
      out.resize(cut);
      if (root.end == 0 && out.size() == 1 && out[0] == C('.')) out.clear();  // its drive guard
      --kept;
      return;
    }
    if (!is_dot_dot(e)) ++kept;
    append_element(out, root.end, e, style);
  });
  return out;
}

// The code units compared: bytes (posix), or upper-cased UTF-16 units
// (windows), decoded from UTF-8 when the text is bytes. 0 at the end.
template <class C>
class FoldedUnits {
 public:
  FoldedUnits(PathView<C> t, PathStyle style) : p_(t.data()), end_(t.data() + t.size()), style_(style) {}

  unsigned next() {
    if (pending_ != 0) return std::exchange(pending_, 0u);
    if (p_ == end_) return 0;
    if (style_ == PathStyle::posix) return static_cast<std::make_unsigned_t<C>>(*p_++);
    if constexpr (sizeof(C) == 1) {
      const unsigned char byte = static_cast<unsigned char>(*p_);
      if (byte < 0x80) {
        ++p_;
        return upper_case_unit(byte);
      }
      const char32_t cp = utf8::next(p_, end_);  // throws utf8::invalid_utf8
      if (cp < 0x10000) return upper_case_unit(char16_t(cp));
      pending_ = 0xDC00 + ((cp - 0x10000) & 0x3FF);
      return 0xD800 + ((cp - 0x10000) >> 10);
    } else {
      return upper_case_unit(char16_t(*p_++));
    }
  }

 private:
  const C* p_;
  const C* end_;
  PathStyle style_;
  unsigned pending_ = 0;
};

// The value `unit` repeated in every code unit of a 64-bit word.
template <class C>
constexpr std::uint64_t in_every_unit(std::uint64_t unit) {
  std::uint64_t word = 0;
  for (unsigned shift = 0; shift < 64; shift += 8 * sizeof(C)) word |= unit << shift;
  return word;
}

// How many leading units of a and b are equal once upper-cased, counted a
// 64-bit word at a time while both words are ASCII without a zero unit:
// the whole comparison for the usual path, with no per-unit branches.
template <class C>
std::size_t equal_ascii_prefix(PathView<C> a, PathView<C> b) {
  static_assert(sizeof(C) == 1 || sizeof(C) == 2, "bytes or UTF-16 units");
  constexpr std::size_t kPerWord = 8 / sizeof(C);
  constexpr std::uint64_t kNotAscii = in_every_unit<C>(sizeof(C) == 1 ? 0x80 : 0xFF80);
  constexpr std::uint64_t kBit7 = in_every_unit<C>(0x80), kOnes = in_every_unit<C>(1);
  auto upper = [&](std::uint64_t w) {
    // Bit 7 of a unit is set by the first sum when it is 'a' or more, and
    // by the second when it is beyond 'z'; no sum carries into the next unit.
    const std::uint64_t lower = (w + in_every_unit<C>(0x80 - 'a')) & ~(w + in_every_unit<C>(0x80 - 'z' - 1)) & kBit7;
    return w - (lower >> 2);
  };
  // Zero when a word is ASCII without a zero unit ((w - 1) & ~w sets bit 7
  // of a zero unit) and upper-cases to the other's word.
  auto differ = [&](std::uint64_t wa, std::uint64_t wb) {
    return ((wa | wb) & kNotAscii) | ((wa - kOnes) & ~wa & kBit7) | ((wb - kOnes) & ~wb & kBit7) |
           (upper(wa) ^ upper(wb));
  };
  const std::size_t n = std::min(a.size(), b.size());
  std::size_t i = 0;
#if defined(__SSE2__)
  // Sixteen bytes a round, bytes or UTF-16 units alike; every x86-64 has
  // these instructions. One mask per round: a unit passes when it is ASCII
  // in both texts, not zero, and equal to the other once upper-cased.
  constexpr std::size_t kPerRound = 16 / sizeof(C);
  auto set1 = [](unsigned unit) { return sizeof(C) == 1 ? _mm_set1_epi8(char(unit)) : _mm_set1_epi16(short(unit)); };
  auto equal = [](__m128i x, __m128i y) { return sizeof(C) == 1 ? _mm_cmpeq_epi8(x, y) : _mm_cmpeq_epi16(x, y); };
  auto greater = [](__m128i x, __m128i y) { return sizeof(C) == 1 ? _mm_cmpgt_epi8(x, y) : _mm_cmpgt_epi16(x, y); };
  const __m128i below_a = set1('a' - 1), above_z = set1('z' + 1), case_bit = set1(0x20), zero = _mm_setzero_si128();
  const __m128i not_ascii = set1(sizeof(C) == 1 ? 0x80 : 0xFF80);
  auto upper_round = [&](__m128i v) {
    return _mm_sub_epi8(v, _mm_and_si128(_mm_and_si128(greater(v, below_a), greater(above_z, v)), case_bit));
  };
  auto same_round = [&](std::size_t at) {
    const __m128i va = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a.data() + at));
    const __m128i vb = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b.data() + at));
    const __m128i ascii = equal(_mm_and_si128(_mm_or_si128(va, vb), not_ascii), zero);
    const __m128i same = equal(upper_round(va), upper_round(vb));
    const __m128i pass = _mm_andnot_si128(equal(va, zero), _mm_and_si128(ascii, same));
    return _mm_movemask_epi8(pass) == 0xFFFF;
  };
  while (i + kPerRound <= n && same_round(i)) i += kPerRound;
  // The last units as one more round that overlaps the one before.
  if (i + kPerRound > n && n >= kPerRound && same_round(n - kPerRound)) return n;
#endif
  for (; i + kPerWord <= n; i += kPerWord) {
    std::uint64_t wa, wb;
    std::memcpy(&wa, a.data() + i, 8);
    std::memcpy(&wb, b.data() + i, 8);
    if (differ(wa, wb) != 0) break;
  }
  for (; i < n; ++i) {
    const unsigned x = static_cast<std::make_unsigned_t<C>>(a[i]), y = static_cast<std::make_unsigned_t<C>>(b[i]);
    if (x == 0 || x >= 0x80 || y >= 0x80 || upper_case_unit(char16_t(x)) != upper_case_unit(char16_t(y))) break;
  }
  return i;
}

template <class C>
int compare_text(PathView<C> a, PathView<C> b, PathStyle style) {
  // The common cases end here: texts equal after ASCII upper-casing
  // (windows) or byte for byte (posix).
  if (style == PathStyle::windows) {
    const std::size_t same = equal_ascii_prefix(a, b);
    if (same == a.size() && same == b.size()) return 0;
    a.remove_prefix(same);
    b.remove_prefix(same);
  } else if (a == b) {
    return 0;  // identical texts are equal whatever follows a zero
  }
  FoldedUnits<C> ua(a, style), ub(b, style);
  for (;;) {
    const unsigned x = ua.next(), y = ub.next();
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) return 0;
  }
}

// compare_text(a, b, style) == 0, without its ordering walk for the usual
// unequal pair: texts without a zero that differ in length or in a byte
// (posix) are unequal outright.
template <class C>
bool equal_text(PathView<C> a, PathView<C> b, PathStyle style) {
  if (style == PathStyle::posix) {
    if (a == b) return true;
    if (a.find(C(0)) == PathView<C>::npos && b.find(C(0)) == PathView<C>::npos) return false;
  }
  return compare_text(a, b, style) == 0;
}

template <class C>
bool starts_with_text(PathView<C> t, PathView<C> prefix, PathStyle style) {
  if (style == PathStyle::windows) {
    const std::size_t same = equal_ascii_prefix(t, prefix);
    if (same == prefix.size()) return true;
    t.remove_prefix(same);
    prefix.remove_prefix(same);
  }
  FoldedUnits<C> ut(t, style), up(prefix, style);
  for (;;) {
    const unsigned y = up.next();
    if (y == 0) return true;
    if (ut.next() != y) return false;
  }
}

// `base` / `p` as the standard path's append has it, on this grammar: a
// p with a root directory and a root name, or with another root name than
// base's, replaces base; a root directory alone keeps base's root name;
// anything else is joined with a separator (none after a bare drive "C:").
template <class C>
PathText<C> append_text(PathView<C> base, PathView<C> p, PathStyle style) {
  const RootSpan pr = split_root(p, style), br = split_root(base, style);
  const bool p_has_dir = pr.end > pr.name_end;
  if ((p_has_dir && (pr.name_end > 0 || style == PathStyle::posix)) ||
      (pr.name_end > 0 && (br.name_end == 0 || compare_text(base.substr(0, br.name_end), p.substr(0, pr.name_end),
                                                            style) != 0)))
    return PathText<C>(p);
  PathText<C> out(p_has_dir ? base.substr(0, br.name_end) : base);
  const bool bare_drive = out.size() == br.name_end && br.name_end == 2 && looks_like_drive(base);
  if (!p_has_dir && !out.empty() && !is_sep(out.back(), style) && !bare_drive) out.push_back(C(preferred_sep(style)));
  out.append(p.substr(pr.name_end));
  return out;
}

template <class C>
PathText<C> resolve_text(PathView<C> base, PathView<C> p, PathStyle style) {
  const RootSpan pr = split_root(p, style), br = split_root(base, style);
  const bool p_has_name = pr.name_end > 0, p_has_dir = pr.end > pr.name_end;
  PathText<C> joined;
  if (!p_has_name && !p_has_dir) {
    joined = PathText<C>(base);
    append_element(joined, br.end, p, style);
  } else if (!p_has_name) {
    joined = PathText<C>(base.substr(0, br.name_end));
    joined.append(p);
  } else if (p_has_dir || (br.name_end > 0 && compare_text(base.substr(0, br.name_end), p.substr(0, pr.name_end),
                                                           style) != 0)) {
    joined = PathText<C>(p);
  } else {
    joined = PathText<C>(p.substr(0, pr.name_end));
    joined.append(base.substr(br.name_end));
    append_element(joined, pr.name_end + (br.end - br.name_end), p.substr(pr.end), style);
  }
  return normalize_text<C>(joined, style);
}

// How many elements after the root still name the same volume: a share
// after a server ("\\srv\share"), a drive after a device or verbatim prefix
// ("\\?\C:"), and the server and share of "\\?\UNC\srv\share". Two paths
// that differ there are on different volumes.
template <class C>
std::size_t volume_elements(PathView<C> t, const RootSpan& root, PathStyle style) {
  if (style != PathStyle::windows || root.name_end < 3 || !is_sep(t[0], style)) return 0;
  const PathView<C> name = t.substr(2, root.name_end - 2);
  if (name.size() != 1 || (name[0] != C('?') && name[0] != C('.'))) return 1;
  const PathView<C> first = t.substr(root.end, 4);
  const bool unc = first.size() >= 3 && (first.size() == 3 || is_sep(first[3], style)) &&
                   (unsigned(first[0]) | 0x20) == 'u' && (unsigned(first[1]) | 0x20) == 'n' &&
                   (unsigned(first[2]) | 0x20) == 'c';
  return unc ? 3 : 1;
}

template <class C>
PathText<C> make_relative_text(PathView<C> path, PathView<C> base, PathStyle style, bool* made_relative, int max_up) {
  const PathText<C> np = normalize_text(path, style), nb = normalize_text(base, style);
  const PathView<C> p(np), b(nb);
  const RootSpan pr = split_root(p, style), br = split_root(b, style);
  auto absolute = [style](const RootSpan& r) {
    return r.end > r.name_end && (style == PathStyle::posix || r.name_end > 0);
  };
  auto fail = [&] {
    if (made_relative) *made_relative = false;
    return np;
  };
  // The comparisons stop at a zero unit, so "..\0x" would match ".." and
  // the answer would name another place; no file has such a name anyway.
  const bool has_zero = p.find(C(0)) != PathView<C>::npos || b.find(C(0)) != PathView<C>::npos;
  if (has_zero || !absolute(pr) || !absolute(br) ||
      compare_text(p.substr(0, pr.name_end), b.substr(0, br.name_end), style) != 0)
    return fail();
  // Normalized, so the elements after the roots are single-separated.
  std::size_t i = pr.end, j = br.end, matched = 0;
  auto element_end = [style](PathView<C> t, std::size_t from) {
    while (from < t.size() && !is_sep(t[from], style)) ++from;
    return from;
  };
  while (i < p.size() && j < b.size()) {
    const std::size_t ie = element_end(p, i), je = element_end(b, j);
    if (compare_text(p.substr(i, ie - i), b.substr(j, je - j), style) != 0) break;
    i = ie < p.size() ? ie + 1 : ie;
    j = je < b.size() ? je + 1 : je;
    ++matched;
  }
  // No ".." climbs from one share or drive to another.
  if (matched < std::max(volume_elements(p, pr, style), volume_elements(b, br, style))) return fail();
  long long ups = 0;
  for (std::size_t k = j; k < b.size(); k = element_end(b, k) + 1) {
    // A leading ".." in the base cannot be climbed out of by name.
    if (is_dot_dot(b.substr(k, element_end(b, k) - k))) return fail();
    ++ups;
  }
  if (ups > max_up) return fail();
  PathText<C> out;
  for (long long k = 0; k < ups; ++k) append_element(out, 0, PathView<C>(kDotDot<C>, 2), style);
  if (i < p.size()) append_element(out, 0, p.substr(i), style);
  if (made_relative) *made_relative = true;
  return out;
}

}  // namespace qorin::detail
