// ParamItemParser: splits an annotation into its nominal and trailing
// options and writes the whole back.
#include <qorin/parser.h>

namespace qorin::parser {

ParamItemParser::~ParamItemParser() = default;

void ParamItemParser::clear_options() {
  options_.clear();
  tune_ = nullptr;
  opt_ = nullptr;
  stat_ = nullptr;
  doe_ = nullptr;
  unit_type_ = set_type_;
}

void ParamItemParser::clear() {
  clear_options();
  nominal_.parse_value({}, nullptr, false, false);
}

void ParamItemParser::parse(const std::string& text, bool parse_options) {
  clear_options();  // the nominal is parsed afresh below
  std::string_view rest = text;
  while (pull_one_option(&rest)) {
  }
  nominal_.parse_value(rest, unit_type_, false, allow_any_unit_);
  // A nominal without a unit keeps the expected type but no multiplier; with
  // any unit allowed it imposes no type on the options.
  if (allow_any_unit_) unit_type_ = nominal_.units().is_valid() ? nominal_.unit_type() : nullptr;
  if (!parse_options) return;
  for (const auto& option : options_) option->parse(unit_type_);
}

bool ParamItemParser::pull_one_option(std::string_view* text) {
  const std::string_view in = *text;
  std::size_t size = in.find_last_not_of(' ') + 1;  // npos + 1 == 0
  if (size < 5 || in[size - 1] != '}') return false;

  // Option bodies hold no quotes and no braces; position 0 is never looked at.
  std::size_t open = 0;
  for (std::size_t i = size - 2; i > 0; --i) {
    char c = in[i];
    if (c == '{') {
      open = i;
      break;
    }
    if (c == '\'' || c == '"' || c == '}') return false;
  }
  if (open == 0) return false;

  // The keyword is the last blank-separated word before '{' («opt {» is fine).
  std::size_t head_end = in.find_last_not_of(' ', open - 1);
  if (head_end == std::string_view::npos) return false;
  std::size_t blank = in.rfind(' ', head_end);
  std::size_t k = blank == std::string_view::npos ? 0 : blank + 1;
  std::size_t keyword_size = head_end + 1 - k;

  bool enabled = true;
  std::size_t word = k;
  if (keyword_size >= 2 && in[k] == 'n' && in[k + 1] == 'o') {
    enabled = false;
    word += 2;
    keyword_size -= 2;
  }
  auto keyword_is = [&](std::string_view name) { return in.substr(word, keyword_size) == name; };

  ParamOptionData* option = nullptr;
  if (keyword_size == 3) {
    if (!opt_ && keyword_is("opt")) {
      option = add_opt();
    } else if (!doe_ && keyword_is("doe")) {
      option = add_doe();
    }
  } else if (keyword_size == 4) {
    if (!tune_ && keyword_is("tune")) {
      option = add_tune();
    } else if (!stat_ && keyword_is("stat")) {
      option = add_stat();
    }
  }
  if (option == nullptr) return false;

  option->set_full_text(std::string(in.substr(k, size - k)));
  option->set_enabled(enabled);
  // Only the one blank before the keyword goes; the nominal parse trims the rest.
  *text = in.substr(0, k == 0 ? 0 : k - 1);
  return true;
}

void ParamItemParser::add_option(std::unique_ptr<ParamOptionData> option) {
  ParamOptionData* added = option.get();
  if (options_.empty()) options_.reserve(4);  // one of each kind, usually
  options_.push_back(std::move(option));
  // A new option's values already use the dbmtow notation, the default.
  if (!nominal_.uses_dbmtow_functions()) added->set_use_dbmtow_functions(false);
}

template <class Kind>
Kind* ParamItemParser::add_kind(Kind** slot) {
  if (*slot == nullptr) {
    auto option = std::make_unique<Kind>();
    *slot = option.get();
    add_option(std::move(option));
  }
  return *slot;
}

ParamOptData* ParamItemParser::add_opt() { return add_kind(&opt_); }
ParamStatData* ParamItemParser::add_stat() { return add_kind(&stat_); }
ParamTuneData* ParamItemParser::add_tune() { return add_kind(&tune_); }
ParamDoeData* ParamItemParser::add_doe() { return add_kind(&doe_); }

void ParamItemParser::set_legacy_unit(DMUnitE code) { set_unit_type(units::get_legacy_unit(code)); }

void ParamItemParser::set_use_dbmtow_functions(bool use) {
  nominal_.set_use_dbmtow_functions(use);
  for (const auto& option : options_) option->set_use_dbmtow_functions(use);
}

void ParamItemParser::scale_all_unitless_values(units::UnitAndMultiplier unit) {
  if (!nominal_.units().is_valid()) nominal_.scale_value_to_new_unit(unit);
  for (const auto& option : options_) option->scale_all_unitless_values(unit);
}

void ParamItemParser::reformat() {
  nominal_.update_combined_value();
  for (const auto& option : options_) option->reformat();
}

std::string ParamItemParser::get_combined_string() const {
  std::string result;
  get_combined_string(&result);
  return result;
}

void ParamItemParser::get_combined_string(std::string* out) const {
  // Each option goes in front of those before it in the list: parsed options
  // (pulled right to left) come out as typed, later additions right after the
  // nominal.
  std::size_t size = nominal_.combined_value_.size();
  for (const auto& option : options_) size += 1 + option->get_full_text().size();
  std::string& result = *out;
  result.reserve(size);
  result = nominal_.combined_value_;
  for (auto it = options_.rbegin(); it != options_.rend(); ++it) {
    result += ' ';
    result += (*it)->get_full_text();
  }
}

const char* ParamItemParser::kind_name(const ParamOptionData* option) const {
  if (option == opt_) return "opt";
  if (option == stat_) return "stat";
  if (option == tune_) return "tune";
  if (option == doe_) return "doe";
  return "";
}

bool ParamItemParser::is_valid() const {
  for (const auto& option : options_) {
    if (option->is_invalid()) return false;
  }
  return true;
}

}  // namespace qorin::parser
