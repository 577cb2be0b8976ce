// ParamOptionData: the sweep shared by every option kind, read from the
// option body's words and written back in canonical form.
#include <qorin/parser.h>

#include "units/percent_unit.h"

#include <string_view>

namespace qorin::parser {

namespace {

// Runs of ' ' separate words; tabs belong to words.
std::vector<std::string> split_words(const std::string& text, std::size_t begin, std::size_t end) {
  std::vector<std::string> words;
  words.reserve(8);  // the longest usual body, «discrete 1 pF to 9 pF by 1 pF», has 8
  std::size_t i = begin;
  while (i < end) {
    while (i < end && text[i] == ' ') ++i;
    std::size_t word_begin = i;
    while (i < end && text[i] != ' ') ++i;
    if (i > word_begin) words.emplace_back(text, word_begin, i - word_begin);
  }
  return words;
}

bool is_word(const std::string& word, std::string_view expected) { return std::string_view(word) == expected; }

}  // namespace

ParamOptionData::~ParamOptionData() = default;

const char* sweep_type_name(ParamOptionSweepType type) {
  switch (type) {
    case sweep_empty: return "empty";
    case sweep_range: return "range";
    case sweep_stepped_range: return "stepped range";
    case sweep_delta: return "deviation";
    case sweep_percent_delta: return "percent deviation";
    default: return "invalid";
  }
}

void ParamOptionData::parse(const units::UnitType* unit_type) {
  // The body lies after the first '{', without the closing character.
  std::size_t open = full_text_.find('{');
  std::size_t begin = open == std::string::npos ? 0 : open + 1;
  std::size_t end = full_text_.empty() ? 0 : full_text_.size() - 1;
  sweep_type_ = sweep_invalid;
  parsed_sweep_type_ = sweep_invalid;
  if (begin >= end) return;
  std::vector<std::string> words = split_words(full_text_, begin, end);
  if (words.empty() || !parse_special(&words)) return;
  parse_sweep(&words, unit_type);
  parsed_sweep_type_ = sweep_type_;
  if (!sweep_type_is_legal()) sweep_type_ = sweep_invalid;
}

void ParamOptionData::parse_sweep(std::vector<std::string>* words_in, const units::UnitType* unit_type) {
  std::vector<std::string>& words = *words_in;
  const std::size_t n = words.size();
  // A value is one word («1pF», with an optional unit suffix) or two («1 pF»).
  auto read_one = [&](ParserValue& value, std::size_t i, bool allow_percent) {
    value.parse_value(words[i], unit_type, allow_percent, false);
  };
  // Without a type the unit word is looked up in the whole catalogue, but the
  // canonical one-word form «1pF» would then not read back: such a value
  // cannot be carried, and the read fails.
  // A failed read leaves the option invalid, so what it wrote does not matter.
  // «None» leaves the value without a unit, and so does its canonical text:
  // a value that alone would read a unit of its own («-20dbm None») cannot
  // be carried either.
  auto read_two = [&](ParserValue& value, std::size_t i, bool allow_percent) {
    if (!value.set_numeric_value_and_unit_words(words[i], words[i + 1], unit_type, allow_percent)) return false;
    if (value.units().is_valid()) {
      return unit_type != nullptr || (allow_percent && value.unit_type() == units::detail::percent_unit().type());
    }
    ParserValue alone;
    read_one(alone, i, allow_percent);
    return !alone.units().is_valid();
  };

  if (n == 0) {
    sweep_type_ = sweep_empty;
    return;
  }
  if (is_word(words[0], "+/-")) {
    if (n == 2) {
      read_one(start_, 1, true);
    } else if (n == 3 && !read_two(start_, 1, true)) {
      return;
    }
    // Any other word count leaves start as it was and still picks the form
    // from its unit: older files depend on this.
    const units::UnitType* percent = units::detail::percent_unit().type();
    sweep_type_ = percent != nullptr && start_.unit_type() == percent ? sweep_percent_delta : sweep_delta;
    return;
  }

  std::size_t to;
  if (n >= 2 && is_word(words[1], "to")) {
    read_one(start_, 0, false);
    to = 1;
  } else if (n >= 3 && is_word(words[2], "to")) {
    // A start that cannot be read leaves the option invalid, kept as typed:
    // a range without its start would lose the words.
    if (!read_two(start_, 0, false)) return;
    to = 2;
  } else {
    return;
  }

  if (n == to + 2) {
    read_one(stop_, to + 1, false);
    sweep_type_ = sweep_range;
    return;
  }
  if (n == to + 3) {
    if (read_two(stop_, to + 1, false)) sweep_type_ = sweep_range;
    return;
  }
  if (n <= to + 3) return;

  std::size_t by;
  if (is_word(words[to + 2], "by")) {
    read_one(stop_, to + 1, false);
    by = to + 3;
  } else if (is_word(words[to + 3], "by")) {
    if (!read_two(stop_, to + 1, false)) return;
    by = to + 4;
  } else {
    return;
  }

  if (n == by + 1) {
    read_one(step_, by, false);
  } else if (n == by + 2) {
    if (!read_two(step_, by, false)) return;
  } else {
    return;
  }
  sweep_type_ = sweep_stepped_range;
}

void ParamOptionData::reformat() {
  // An invalid option is written back exactly as the user typed it.
  if (sweep_type_ == sweep_invalid) return;
  struct Part {
    std::string_view separator;
    ParserValue* value;
  };
  Part parts[3];
  std::size_t count = 0;
  switch (sweep_type_) {
    case sweep_range:
    case sweep_stepped_range:
      parts[count++] = {"", &start_};
      parts[count++] = {" to ", &stop_};
      if (sweep_type_ == sweep_stepped_range) parts[count++] = {" by ", &step_};
      break;
    case sweep_delta:
    case sweep_percent_delta:
      parts[count++] = {"+/- ", &start_};
      break;
    default:
      break;
  }
  // Sized first, so the sweep takes at most one allocation.
  std::size_t size = 0;
  for (std::size_t i = 0; i < count; ++i) {
    parts[i].value->update_combined_value();
    size += parts[i].separator.size() + parts[i].value->combined_value_.size();
  }
  std::string sweep;
  sweep.reserve(size);
  for (std::size_t i = 0; i < count; ++i) sweep.append(parts[i].separator).append(parts[i].value->combined_value_);
  full_text_ = reformat_impl(sweep);
  if (!enabled_) full_text_.insert(0, "no");
}

void ParamOptionData::scale_all_unitless_values(units::UnitAndMultiplier unit) {
  for (ParserValue* value : {&start_, &stop_, &step_}) {
    if (!value->units().is_valid()) value->scale_value_to_new_unit(unit);
  }
  reformat();
}

void ParamOptionData::set_use_dbmtow_functions(bool use) {
  for (ParserValue* value : {&start_, &stop_, &step_}) value->set_use_dbmtow_functions(use);
  reformat();
}

}  // namespace qorin::parser
