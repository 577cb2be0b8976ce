// The four option kinds: their own words, the sweep forms they accept and
// the text they write around the sweep.
#include <qorin/parser.h>

#include <string_view>

namespace qorin::parser {

namespace {

// The option text in one allocation: `head`, the sweep, then `tail`.
std::string option_text(std::string_view head, const std::string& sweep_text, const char* tail) {
  std::string text;
  text.reserve(head.size() + sweep_text.size() + 16);
  text += head;
  text += sweep_text;
  text += tail;
  return text;
}

bool front_is(const std::vector<std::string>& words, std::string_view word) {
  return !words.empty() && std::string_view(words.front()) == word;
}

}  // namespace

// --- opt{ } ---

bool ParamOptData::parse_special(std::vector<std::string>* words) {
  ppt_ = front_is(*words, "ppt");
  if (ppt_) words->erase(words->begin());
  unconstrained_ = false;
  type_ = continuous;
  if (front_is(*words, "unconst")) {
    // Left in place on purpose: the sweep parser then refuses it, so only a
    // sweep type set by the caller makes an unconstrained option valid.
    unconstrained_ = true;
  } else if (front_is(*words, "discrete")) {
    words->erase(words->begin());
    type_ = discrete;
  }
  return true;
}

bool ParamOptData::sweep_type_is_legal() const {
  ParamOptionSweepType sweep = sweep_type();
  if (type_ == discrete) return sweep == sweep_stepped_range;
  if (unconstrained_) return sweep == sweep_empty;
  return sweep == sweep_range || sweep == sweep_delta || sweep == sweep_percent_delta;
}

std::string ParamOptData::reformat_impl(const std::string& sweep_text) {
  std::string head = "opt{ ";
  if (ppt_) head += "ppt ";
  if (unconstrained_) head += "unconst ";
  if (type_ == discrete) head += "discrete ";
  return option_text(head, sweep_text, " }");
}

// --- stat{ } ---

bool ParamStatData::parse_special(std::vector<std::string>* words) {
  static constexpr std::string_view kDistributions[] = {"gauss", "uniform", "discrete", "lognormal"};
  for (int i = 0; i < 4; ++i) {
    if (front_is(*words, kDistributions[i])) {
      words->erase(words->begin());
      type_ = static_cast<Type>(i);
      return true;
    }
  }
  if (words->size() >= 3 && front_is(*words, "distcompname") && (*words)[1] == "=") {
    // A component name typed with blanks is joined up; nothing is left for a sweep.
    type_ = dist_compname;
    dist_compname_.clear();
    for (std::size_t i = 2; i < words->size(); ++i) dist_compname_ += (*words)[i];
    words->clear();
    return true;
  }
  return false;
}

bool ParamStatData::sweep_type_is_legal() const {
  ParamOptionSweepType sweep = sweep_type();
  bool delta = sweep == sweep_delta || sweep == sweep_percent_delta;
  switch (type_) {
    case gauss:
    case lognormal:
      return delta;
    case uniform:
      return delta || sweep == sweep_range;
    case discrete:
      return sweep == sweep_stepped_range;
    case dist_compname:
      return sweep == sweep_empty;
  }
  return false;
}

std::string ParamStatData::reformat_impl(const std::string& sweep_text) {
  if (type_ == dist_compname) return option_text("stat{ distcompname = ", dist_compname_, " }");
  const char* head = "stat{ gauss ";
  switch (type_) {
    case uniform: head = "stat{ uniform "; break;
    case discrete: head = "stat{ discrete "; break;
    case lognormal: head = "stat{ lognormal "; break;
    default: break;
  }
  return option_text(head, sweep_text, " }");
}

// --- tune{ } ---

bool ParamTuneData::parse_special(std::vector<std::string>* words) {
  // Never cleared here: a parsed logScale sticks until set_log_scale(false).
  if (!words->empty() && std::string_view(words->back()) == "logScale") {
    words->pop_back();
    log_scale_ = true;
  }
  return true;
}

bool ParamTuneData::sweep_type_is_legal() const {
  return sweep_type() == (log_scale_ ? sweep_range : sweep_stepped_range);
}

std::string ParamTuneData::reformat_impl(const std::string& sweep_text) {
  return option_text("tune{ ", sweep_text, log_scale_ ? " logScale }" : " }");
}

// --- doe{ } ---

bool ParamDoeData::parse_special(std::vector<std::string>*) {
  type_ = standard;
  return true;
}

bool ParamDoeData::sweep_type_is_legal() const {
  ParamOptionSweepType sweep = sweep_type();
  return sweep == sweep_range || sweep == sweep_delta || sweep == sweep_percent_delta;
}

std::string ParamDoeData::reformat_impl(const std::string& sweep_text) {
  return option_text("doe{ ", sweep_text, " }");
}

}  // namespace qorin::parser
