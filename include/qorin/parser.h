// Parameter values and annotations: a value as a user types it, with its
// unit, and an annotation, a nominal value followed by opt{ }, stat{ },
// tune{ } and doe{ } options.
//
// A ParserValue is one value: a number, a variable name, a quoted string or a
// file{...} reference, optionally followed by a unit from the catalogue
// (<qorin/units.h>). It keeps value and unit apart and re-forms the canonical
// text (its combined value). ParamItemParser splits an annotation into its
// nominal ParserValue and its options. Parsing never throws: text that does
// not parse is marked invalid and written back as typed. A blank is the
// character ' ' only; tabs are not trimmed. Values and parsers are not
// synchronised; use one per thread.
//
// Start with ParamItemParser: set_unit_type, parse, reformat,
// get_combined_string.
//
// Example (capacitance type):
//   ParamItemParser p; p.set_unit_type(find_unit_type("cap"));
//   p.parse("10 pF  opt{ 1 pF to 20 pF }", true); p.reformat();
//   p.get_combined_string() => "10pF opt{ 1pF to 20pF }"   p.nominal() => "10"
//
// Example (ParserValue, frequency type):
//   "1kHz"     => value "1",    unit kHz, combined "1kHz"
//   "1 k"      => value "1",    unit kHz, combined "1kHz"
//   "x_1 GHz"  => value "x_1",  unit GHz, combined "(x_1) GHz"
//   "10 dbm" (power type) => value "10", unit dBm, combined "dbmtow(10)"
#pragma once

#include <qorin/export.h>
#include <qorin/units.h>

#include <optional>
#include <string>
#include <string_view>

namespace qorin::parser {

// One value and its unit.
//
// The value is "unitless" when either unit pointer is null. A value without a
// recognised unit keeps the type it was parsed with and no multiplier, so
// unit_type() still names the expected quantity; the combined text is then
// the value alone. Types without scale factors (ang, temp, num, string) never
// show their unit in the combined text.
//
// The parenthesised form "(" value ") " unit is written for a value that would
// not read back if glued to its unit: one the user wrote in parentheses
// («(a+b) pF» => value «a+b»), one that is not empty, a number, a quoted
// string, a variable name or a file reference, and one that ends in a
// letter, digit or '_' («x_1 GHz» => "(x_1) GHz"): the rules that keep «1kHz»
// apart from «1k» + «Hz» would not split «x_1GHz». Only a pair of
// parentheses that match (quoted strings skipped) is taken off: «(a)*(b) pF»
// is not «a)*(b» in pF but a value without a unit, kept as typed.
//
// Not thread-safe for writes; distinct values may be used on distinct threads.
class QORIN_EXPORT ParserValue {
 public:
  ParserValue() = default;

  std::string combined_value() const { return combined_value_; }
  std::string value() const { return value_; }
  const units::UnitAndMultiplier& units() const { return units_; }
  const units::UnitType* unit_type() const { return units_.type(); }

  // Replaces the units and re-forms the combined text.
  void set_unit_multiplier(units::UnitAndMultiplier units);
  // Power values in dBm/dBW re-form as "dbmtow(v)"/"dbwtow(v)" while set
  // (the default), as "vdBm"/"vdBW" otherwise.
  void set_use_dbmtow_functions(bool use);
  bool uses_dbmtow_functions() const { return use_dbmtow_functions_; }
  void reformat();
  // Whether the value part is a number (isValidNumber).
  bool is_number() const;

  // The main parse of `text` (blanks around it ignored). Tried in this order,
  // the first success wins: the percent unit (when allowed); every type of the
  // catalogue in order (when allow_any_unit); `type`; for the power type, a
  // "dbmtow(v)"/"dbwtow(v)" call; else the whole text is a value without unit.
  // A unit is found by walking the type's units in catalogue order and
  // matching the full name, a bare scale letter, or "dbm" for dBm; a value
  // glued to the unit that ends in a letter, digit or '_' and is not a number
  // sends the walk on.
  // The power call is read for the power type and, with any unit allowed,
  // for no type. It tolerates blanks around and inside its parentheses; its
  // argument is everything between the "(" after the name and the ")" that
  // closes it, which must be the last byte, taken as written (so every text
  // re-formed by this class reads back). Without a balanced pair
  // ("dbmtow_gain", «dbmtow((1)») the text is a plain value, kept as typed.
  //
  // Example:
  //   "1kHz"  (freq)           => "1" kHz       "1 k" (freq)       => "1" kHz
  //   "1 m"   (res)            => "1" mOhm      "1 M" (res)        => "1" MOhm
  //   "\"abc\" pF" (cap)       => "\"abc\"" pF  "file{a.txt} Hz"   => "file{a.txt}" Hz
  //   "(a+b) pF" (cap)         => "a+b" pF, combined "(a+b) pF"
  //   "dbmtow ( 10 )" (power)  => "10" dBm, combined "dbmtow(10)"
  //   "5 %" (cap, percent)     => "5" %         "2.5" (freq)       => "2.5" (freq, no unit)
  void set_value_with_optional_unit_suffix(std::string text, const units::UnitType* type,
                                           bool allow_percent, bool allow_any_unit);
  // Looks `unit` up with find_unit below and, when found, sets it and
  // re-forms. False (and no change) when not found.
  bool set_unit_string(std::string unit, const units::UnitType* type, bool allow_percent);
  // Sets the value text (blanks trimmed) and the units as given.
  void set_numeric_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  // The two-word form ("1" "pF"): false and no change when `unit` is not found.
  bool set_numeric_value_and_unit_string(std::string value, std::string unit,
                                         const units::UnitType* type, bool allow_percent);
  // As the numeric forms, but when the value text carries its own non-empty
  // value and a unit of the given unit's type, that unit wins: the text is
  // explicit, the given unit only a default.
  //
  // Example:
  //   ("5 GHz", MHz) => "5" GHz        ("x", MHz) => "x" MHz
  //   ("a+b", pF)    => "a+b" pF, combined "(a+b) pF"
  void set_value_and_unit_multiplier(std::string value, units::UnitAndMultiplier units);
  bool set_value_and_unit_string(std::string value, std::string unit, const units::UnitType* type,
                                 bool allow_percent);

  // Rescales a numeric value into `new_unit`; a unitless value is taken as
  // MKS. The new value text is fromDouble(y, 'g', 6, 0), or "0" when
  // |y| <= 1e-21. False when the value is not a number or the conversion
  // fails (non-positive power, float overflow guard). Throws
  // std::runtime_error for units of another type:
  //   "Cannot scale from \"pF\" to \"Hz\"."
  // and, from the conversion, for a new unit that is not complete.
  //
  // Example:
  //   "1" (no unit) to kHz => "0.001", combined "0.001kHz"
  //   "1500" MHz to GHz    => "1.5"
  bool scale_value_to_new_unit(units::UnitAndMultiplier new_unit);
  // True and no change when the value has both unit pointers.
  bool scale_if_unitless(units::UnitAndMultiplier new_unit);

  // A unit word: "%" (when allowed) is the percent unit; "None" is success
  // with `type` and no multiplier. With a scaled type: a scale letter, an
  // exact name, or "dbm" for dBm; with an unscaled type: "", the first unit's
  // name or letter; with no type, an exact name anywhere in the catalogue
  // (first match). *out is untouched on failure.
  //
  // Example:
  //   ("k", freq) => kHz    ("kHz", res) => false    ("ft", null) => lng ft
  static bool find_unit(units::UnitAndMultiplier* out, std::string text, const units::UnitType* type,
                        bool allow_percent);
  // Blanks around ignored. '...' with every inner ' escaped by a backslash,
  // or "..." whose inner " are escaped by a backslash or doubled.
  //
  // Example:
  //   'it\'s' => true    'it's' => false    "a""b" => true    "a"b" => false    ' => true
  static bool is_quoted_string(std::string text);
  // [A-Za-z_][A-Za-z0-9_]*, ASCII only.
  static bool is_valid_variable_name(const std::string& text);

 private:
  // The annotation classes re-form their values' texts directly.
  friend class ParamOptionData;
  friend class ParamItemParser;

  // Re-forms the combined value from value, unit and flags.
  void update_combined_value();
  // The public parse and setters on views of the caller's text, which the
  // annotation classes pass without copying it into strings first.
  void parse_value(std::string_view text, const units::UnitType* type, bool allow_percent,
                   bool allow_any_unit);
  static bool find_unit_word(units::UnitAndMultiplier* out, std::string_view text,
                             const units::UnitType* type, bool allow_percent);
  bool set_numeric_value_and_unit_words(std::string_view value, std::string_view unit,
                                        const units::UnitType* type, bool allow_percent);
  bool set_value_with_unit_impl(std::string_view text, const units::UnitType* type);
  // Sets value and units without re-forming; parenthesises values that would
  // not read back glued to the unit.
  void assign_value_and_units(std::string_view value, units::UnitAndMultiplier units);

  std::string combined_value_;
  std::string value_;
  units::UnitAndMultiplier units_;
  bool parenthesised_ = false;
  bool use_dbmtow_functions_ = true;  // deliberately on by default
};

}  // namespace qorin::parser

// ---------------------------------------------------------------------------
// Annotations
//
// An annotation is a nominal value followed by up to four options, one of
// each kind: opt{ } (optimisation), stat{ } (statistical variation), tune{ }
// (tuning) and doe{ } (design of experiments). An option written with the
// prefix "no" is kept but disabled. The classes below never throw on bad
// text: what does not parse is marked invalid and written back as typed.
//
// Example (capacitance type), "canonical text" being get_combined_string()
// after reformat():
//   "10 pF opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }"
//     => nominal "10pF", canonical "10pF opt{ 1pF to 20pF } stat{ gauss +/- 5% }"
//   "1 noopt{ 1 to 2 }"      => a disabled opt option, canonical "1 noopt{ 1 to 2 }"
//   "1 opt{ 1 to 2 by 1 }"   => invalid (a stepped range needs "discrete"),
//                               canonical "1 opt{ 1 to 2 by 1 }" (as typed)
// ---------------------------------------------------------------------------

#include <cstdint>
#include <memory>
#include <vector>

namespace qorin::parser {

// The form of an option's sweep.
enum ParamOptionSweepType : std::int32_t {
  sweep_invalid = 0,        // the body did not parse, or the kind refuses the form
  sweep_empty = 1,          // no sweep words at all
  sweep_range = 2,          // start "to" stop
  sweep_stepped_range = 3,  // start "to" stop "by" step
  sweep_delta = 4,          // "+/-" delta
  sweep_percent_delta = 5,  // "+/-" delta in percent
};

// What the four option kinds share: the option's full text (keyword and
// braces included, exactly as it is written back), the enabled flag, and a
// sweep of up to three values. A value in the body is one word («1pF») or two
// («1 pF»).
//
// Example (capacitance type), after parse() and reformat():
//   "opt{ 1 pF to 2 pF }"         => sweep_range, start "1pF", text "opt{ 1pF to 2pF }"
//   "opt{ 1 to 2 by 0.5 }"        => sweep_stepped_range (then refused by ParamOptData)
//   "stat{ gauss +/- 5 % }"       => sweep_percent_delta, start "5%"
//   "opt{ 1 to }"                 => sweep_invalid, text kept as typed
// Note: «+/-» followed by no word or by three or more words does not read the
// delta, yet still sets sweep_delta (or sweep_percent_delta when the delta
// held from before is in percent). Callers rely on this.
class QORIN_EXPORT ParamOptionData {
 public:
  ParamOptionData() = default;
  ParamOptionData(const ParamOptionData&) = default;
  ParamOptionData& operator=(const ParamOptionData&) = default;
  virtual ~ParamOptionData();

  // Whether the kind accepts the sweep form that parsing found.
  virtual bool sweep_type_is_legal() const = 0;

  // Reads the full text's body into the sweep; sweep_invalid when the body is
  // empty, the kind's words are malformed or the form is not legal.
  void parse(const units::UnitType* unit_type);
  // Rebuilds the full text from the fields. An invalid option keeps its text
  // untouched; a disabled one gets "no" in front («noopt{ 1 to 2 }»).
  void reformat();

  const ParserValue& start() const { return start_; }
  const ParserValue& stop() const { return stop_; }
  const ParserValue& step() const { return step_; }
  // These copy the value only; sweep type and full text are left alone.
  void set_start_delta(const ParserValue& value) { start_ = value; }
  void set_stop(const ParserValue& value) { stop_ = value; }
  void set_step(const ParserValue& value) { step_ = value; }

  ParamOptionSweepType sweep_type() const { return sweep_type_; }
  void set_sweep_type(ParamOptionSweepType type) { sweep_type_ = type; }
  // The form the last parse() found before the kind's own check: for an
  // invalid option, sweep_invalid means the body did not parse, anything
  // else a form that the kind does not allow.
  ParamOptionSweepType parsed_sweep_type() const { return parsed_sweep_type_; }
  bool is_invalid() const { return sweep_type_ == sweep_invalid; }

  bool enabled() const { return enabled_; }
  bool disabled() const { return !enabled_; }
  void set_enabled(bool enabled) { enabled_ = enabled; }

  const std::string& get_full_text() const { return full_text_; }
  void set_full_text(const std::string& text) { full_text_ = text; }
  void set_full_text(std::string&& text) { full_text_ = std::move(text); }

  // Gives `unit` to each of start, stop and step that has none (a bare number
  // is taken as MKS), then reformat(). Throws as ParserValue::scale_value_to_new_unit.
  void scale_all_unitless_values(units::UnitAndMultiplier unit);
  // Switches the dBm/dBW notation of start, stop and step, then reformat().
  void set_use_dbmtow_functions(bool use);

 protected:
  // Consumes the kind's own words from the body's word list; false when they
  // are malformed.
  virtual bool parse_special(std::vector<std::string>* words) = 0;
  // The whole option text (without "no") around the canonical sweep text.
  virtual std::string reformat_impl(const std::string& sweep_text) = 0;

  void parse_sweep(std::vector<std::string>* words, const units::UnitType* unit_type);

 private:
  std::string full_text_;
  bool enabled_ = true;
  ParserValue start_;
  ParserValue stop_;
  ParserValue step_;
  ParamOptionSweepType sweep_type_ = sweep_invalid;
  ParamOptionSweepType parsed_sweep_type_ = sweep_invalid;
};

// "empty", "range", "stepped range", "deviation", "percent deviation" or
// "invalid".
QORIN_EXPORT const char* sweep_type_name(ParamOptionSweepType type);

// opt{ [ppt] [unconst | discrete] sweep }: a range or deviation; a stepped
// range only when discrete; an empty sweep only when unconstrained.
//
// Example:
//   "opt{ ppt 1 to 10 }"             => valid, ppt
//   "opt{ discrete 1 to 2 by 0.1 }"  => valid, type discrete
//   "opt{ 1 to 2 by 0.1 }"           => invalid
// Note: parsing leaves "unconst" among the sweep words, so a parsed
// «opt{ unconst }» is always invalid; set the sweep type directly to get the
// written form "opt{ unconst  }" (two blanks: the empty sweep stands between).
class QORIN_EXPORT ParamOptData : public ParamOptionData {
 public:
  enum Type : std::int32_t { continuous = 0, discrete = 1 };

  bool sweep_type_is_legal() const override;

  Type type() const { return type_; }
  void set_type(Type type) { type_ = type; }
  bool is_ppt() const { return ppt_; }
  void set_ppt(bool ppt) { ppt_ = ppt; }
  bool is_unconstrained() const { return unconstrained_; }
  void set_unconstrained(bool unconstrained) { unconstrained_ = unconstrained; }

 protected:
  bool parse_special(std::vector<std::string>* words) override;
  std::string reformat_impl(const std::string& sweep_text) override;

 private:
  bool ppt_ = false;
  bool unconstrained_ = false;
  Type type_ = continuous;
};

// stat{ distribution sweep } or stat{ distcompname = name }.
//
// Example:
//   "stat{ gauss +/- 5 % }"          => valid, gauss, percent deviation
//   "stat{ uniform 1 to 2 }"         => valid;  "stat{ gauss 1 to 2 }" => invalid
//   "stat{ 1 to 2 }"                 => invalid (no distribution word)
//   "stat{ distcompname = a b }"     => valid, compname "ab", text "stat{ distcompname = ab }"
class QORIN_EXPORT ParamStatData : public ParamOptionData {
 public:
  enum Type : std::int32_t { gauss = 0, uniform = 1, discrete = 2, lognormal = 3, dist_compname = 4 };

  ParamStatData() = default;
  ParamStatData(const ParamStatData&) = default;
  ParamStatData(ParamStatData&&) = default;
  ParamStatData& operator=(const ParamStatData&) = default;
  ParamStatData& operator=(ParamStatData&&) = default;
  ~ParamStatData() override = default;

  bool sweep_type_is_legal() const override;

  Type type() const { return type_; }
  void set_type(Type type) { type_ = type; }
  bool is_gaussian() const { return type_ == gauss; }
  bool is_uniform() const { return type_ == uniform; }
  bool is_discrete() const { return type_ == discrete; }
  bool is_lognormal() const { return type_ == lognormal; }
  bool is_dist_compname() const { return type_ == dist_compname; }
  std::string get_dist_compname() const { return dist_compname_; }
  void set_dist_compname(std::string name) { dist_compname_ = std::move(name); }

 protected:
  bool parse_special(std::vector<std::string>* words) override;
  std::string reformat_impl(const std::string& sweep_text) override;

 private:
  std::string dist_compname_;
  Type type_ = gauss;
};

// tune{ stepped range } or tune{ range logScale }.
//
// Example:
//   "tune{ 1 to 2 by 0.1 }" => valid    "tune{ 1 to 10 logScale }" => valid
//   "tune{ 1 to 2 }"        => invalid
class QORIN_EXPORT ParamTuneData : public ParamOptionData {
 public:
  bool sweep_type_is_legal() const override;

  bool is_log_scale() const { return log_scale_; }
  void set_log_scale(bool log_scale) { log_scale_ = log_scale; }

 protected:
  bool parse_special(std::vector<std::string>* words) override;
  std::string reformat_impl(const std::string& sweep_text) override;

 private:
  bool log_scale_ = false;
};

// doe{ range or deviation }.
//
// Example:
//   "doe{ 1 to 2 }" => valid    "doe{ +/- 10 % }" => valid    "doe{ 1 to 2 by 1 }" => invalid
class QORIN_EXPORT ParamDoeData : public ParamOptionData {
 public:
  enum Type : std::int32_t { standard = 0 };

  bool sweep_type_is_legal() const override;

  Type type() const { return type_; }

 protected:
  bool parse_special(std::vector<std::string>* words) override;
  std::string reformat_impl(const std::string& sweep_text) override;

 private:
  Type type_ = standard;
};

// How get_short_annotation_string shows each option kind: display_full
// writes the option's text, display_marker writes "{}" ("{-}" when disabled),
// any other mode leaves the option out.
class QORIN_EXPORT ShortAnnotationHelper {
 public:
  enum DisplayMode : int { display_full = 0, display_marker = 1, display_none = 2 };

  ShortAnnotationHelper() = default;
  ShortAnnotationHelper(const ShortAnnotationHelper&) = default;
  ShortAnnotationHelper& operator=(const ShortAnnotationHelper&) = default;
  virtual ~ShortAnnotationHelper();

  virtual int tune_display_mode() const = 0;
  virtual int opt_display_mode() const = 0;
  virtual int stat_display_mode() const = 0;
  virtual int doe_display_mode() const = 0;
};

// One annotation: the nominal value and its options. Options are pulled off
// the end of the text, right to left; what is left is the nominal. The parser
// owns its options; opt(), stat(), tune() and doe() are views into that list.
//
// Usual order of calls: construct; set_unit_type or set_legacy_unit, optionally
// allow_any_unit and set_use_dbmtow_functions; parse(text, true); then read,
// edit through add_opt() and friends, reformat(), and only then write back
// with get_combined_string (options keep their typed text until re-formed).
// check_annotation below does all of this in one call.
//
// Example (capacitance type):
//   "1 opt{ 1 to 2 } opt{ 3 to 4 }" => one option «opt{ 3 to 4 }»; nominal text
//                                      "1 opt{ 1 to 2 }" (a second opt is not pulled)
//   "1 foo{ x } opt{ 1 to 2 }"      => opt pulled; "1 foo{ x }" is the nominal
//   "1 opt{ 'a' }"                  => no option (quotes and braces end the scan)
//   "1 Opt{ 1 to 2 }"               => no option (keywords are case-sensitive)
// Note: get_combined_string() writes parsed options in the order typed, but an
// option added after parsing comes first, right after the nominal:
//   parse("1 stat{ a } opt{ b }"), add_tune() set to 1 to 2 by 1, reformat()
//     => "1 tune{ 1 to 2 by 1 } stat{ a } opt{ b }"
// Thread safety: none; one parser per thread. Not copyable.
class QORIN_EXPORT ParamItemParser {
 public:
  using OptionList = std::vector<std::unique_ptr<ParamOptionData>>;

  ParamItemParser() = default;
  ParamItemParser(const ParamItemParser&) = delete;
  ParamItemParser& operator=(const ParamItemParser&) = delete;
  ~ParamItemParser();

  // Splits `text` into options and nominal; the option bodies are parsed too
  // when `parse_options` is set. Starts with clear(), so a parser can be
  // reused for one annotation after another.
  void parse(const std::string& text, bool parse_options);
  // Drops the options and the nominal's text; keeps the settings (unit type
  // as set, any unit, dbmtow notation). A type adopted from an earlier
  // nominal under allow_any_unit is forgotten.
  void clear();

  // The option of that kind, created (empty, invalid, with the nominal's
  // dbmtow setting) when absent.
  ParamOptData* add_opt();
  ParamStatData* add_stat();
  ParamTuneData* add_tune();
  ParamDoeData* add_doe();

  const ParamOptData* opt() const { return opt_; }
  const ParamStatData* stat() const { return stat_; }
  const ParamTuneData* tune() const { return tune_; }
  const ParamDoeData* doe() const { return doe_; }
  // Every option in creation order: parsed ones in reverse textual order, then
  // those added later.
  const OptionList& options() const { return options_; }

  void set_unit_type(const units::UnitType* type) { unit_type_ = set_type_ = type; }
  // Catalogue entry code + 2; null outside the catalogue.
  void set_legacy_unit(DMUnitE code);
  const units::UnitType* unit_type() const { return unit_type_; }
  // Lets the nominal carry a unit of any type; parse() then adopts the
  // nominal's unit type (null when it has no unit) for the options.
  void allow_any_unit(bool allow) { allow_any_unit_ = allow; }

  // Copies every field of `value`; nothing is re-formed.
  void set_nominal(const ParserValue& value) { nominal_ = value; }
  const ParserValue& get_nominal() const { return nominal_; }
  std::string nominal() const { return nominal_.value(); }
  std::string nominal_with_units() const { return nominal_.combined_value(); }
  const units::UnitAndMultiplier& nominal_units() const { return nominal_.units(); }

  // Switches the dBm/dBW notation («dbmtow(10)» or «10dBm») of every value.
  void set_use_dbmtow_functions(bool use);
  // Gives `unit` to every value without one, reading a bare number as MKS:
  // «1 opt{ 2 to 3 }» scaled to kHz => "0.001kHz opt{ 0.002kHz to 0.003kHz }".
  // Throws as ParserValue::scale_value_to_new_unit (a unit without type).
  void scale_all_unitless_values(units::UnitAndMultiplier unit);
  // Re-forms the nominal and every option.
  void reformat();

  // The nominal's text, then each option's full text after one blank.
  std::string get_combined_string() const;
  // The same into *out, reusing its storage.
  void get_combined_string(std::string* out) const;
  // False when any option is invalid; the nominal is not examined.
  bool is_valid() const;

  // parse(text, false), then the nominal's text followed by each option as
  // `policy` says for its kind.
  // Example: opt shown as a marker, stat left out:
  //   "10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }" => "10pF {}"
  std::string get_short_annotation_string(const ShortAnnotationHelper& policy,
                                          const std::string& text);

  // "opt", "stat", "tune" or "doe" for this parser's option of that kind;
  // "" for one added through neither.
  const char* kind_name(const ParamOptionData* option) const;

 private:
  bool pull_one_option(std::string_view* text);
  void clear_options();
  void add_option(std::unique_ptr<ParamOptionData> option);
  template <class Kind>
  Kind* add_kind(Kind** slot);

  const units::UnitType* unit_type_ = nullptr;
  bool allow_any_unit_ = false;
  const units::UnitType* set_type_ = nullptr;  // unit_type_ as the caller set it
  ParserValue nominal_;
  OptionList options_;
  ParamTuneData* tune_ = nullptr;
  ParamOptData* opt_ = nullptr;
  ParamStatData* stat_ = nullptr;
  ParamDoeData* doe_ = nullptr;
};

// ---------------------------------------------------------------------------
// Checking an annotation: one call that reads a text the way the qorin tool
// does and returns its canonical text with a verdict.
//
// The canonical text is a fixed point: checked again with the same settings
// it comes back unchanged and means the same (nominal value and unit, each
// option's kind, enabled flag, sweep form, words and values). What the rules
// cannot carry is kept as typed: an invalid option, and under allow_any_unit
// a nominal whose unit the plain form hides (temperature, angle), written
// "value unit" so that the type survives.
//
// Diagnostics, in this order:
//   error    invalid option "opt{ 1 to 2 by 0.1 }": opt does not allow a stepped range
//   error    invalid option "stat{ 1 to 2 }": its body does not parse
//   warning  option "stat{ gauss +/- 5 % 7 }" drops the words "5 % 7"
//   warning  nominal "10 pF" is not a number, variable, quoted string or file
//            reference with a unit of type freq
// An annotation without errors is what ParamItemParser::is_valid() calls
// valid; the warnings are about the nominal and lost words, which it does not
// look at.
//
// Example (capacitance type):
//   check_annotation("10 pF opt{ 1 pF to 20 pF }", {cap})
//     => canonical "10pF opt{ 1pF to 20pF }", no diagnostics
//   check_annotation("(a)*(b) pF", {cap})
//     => canonical "(a)*(b) pF" (kept), warning about the nominal
//
// To write an edited annotation back without this function: reformat() on
// the parser (or on each option changed), then get_combined_string().
// ---------------------------------------------------------------------------

struct AnnotationSettings {
  const units::UnitType* unit_type = nullptr;  // null: no type imposed
  bool allow_any_unit = false;                 // the nominal's unit sets the type
  bool use_dbmtow_functions = true;            // power as dbmtow(...), not «10dBm»
};

struct AnnotationDiagnostic {
  enum Severity : int { warning = 0, error = 1 };
  Severity severity = warning;
  std::string message;
};

struct AnnotationCheck {
  std::string canonical;
  std::vector<AnnotationDiagnostic> diagnostics;

  bool has(AnnotationDiagnostic::Severity severity) const {
    for (const AnnotationDiagnostic& d : diagnostics) {
      if (d.severity == severity) return true;
    }
    return false;
  }
};

// Configures `parser` with `settings`, parses `text` (clearing what the
// parser held), re-forms it and fills `*check`. The parser keeps the parsed
// annotation for the caller to look at. Reusing one parser and one check for
// many texts avoids most allocations.
QORIN_EXPORT void check_annotation(ParamItemParser& parser, const std::string& text,
                                   const AnnotationSettings& settings, AnnotationCheck* check);
QORIN_EXPORT AnnotationCheck check_annotation(const std::string& text, const AnnotationSettings& settings);

// What check_annotation makes of a nominal, for a caller that holds one value
// parsed as the nominal is (set_value_with_optional_unit_suffix without the
// percent unit, allow_any_unit as in the settings).
//
// is_well_formed_nominal: false exactly when check_annotation warns about the
// nominal: a value without a unit that is not empty, a number, a variable, a
// quoted string or a file reference. canonical_nominal: the nominal as it
// stands in the canonical text. value_in_mks: a number converted from
// its unit to MKS, a bare number as it is (taken as MKS already, as
// scale_all_unitless_values reads it); nullopt for anything that is not a
// number. The tool shows option values the same way.
//
// Example (capacitance type):
//   "10 pF"      => well formed, canonical "10pF", MKS 1e-11
//   "(a)*(b) pF" => not well formed, canonical "(a)*(b) pF", no MKS value
// Example (any unit): "25 deg" => canonical "25 deg" (the plain form "25" would hide the unit)
QORIN_EXPORT bool is_well_formed_nominal(const ParserValue& value);
QORIN_EXPORT std::string canonical_nominal(const ParserValue& value, const AnnotationSettings& settings);
QORIN_EXPORT std::optional<double> value_in_mks(const ParserValue& value);

// A value that is looked up in a data file: «file{dataset, value}».
//
// Example:
//   "file{ds1, 3}"        => dac "ds1",  value "3",  valid
//   "file{ds1 , 3 }"      => dac "ds1 ", value "3 " (inner blanks kept)
//   "file{ds1}", "file{a, b}c", "FILE{a, b}" => not valid
class QORIN_EXPORT ParamQDXFileBasedValue {
 public:
  explicit ParamQDXFileBasedValue(const ParserValue& value);
  ParamQDXFileBasedValue(const ParamQDXFileBasedValue&) = default;
  ParamQDXFileBasedValue(ParamQDXFileBasedValue&&) = default;
  ParamQDXFileBasedValue& operator=(const ParamQDXFileBasedValue&) = default;
  ParamQDXFileBasedValue& operator=(ParamQDXFileBasedValue&&) = default;
  ~ParamQDXFileBasedValue() = default;

  std::string get_dac() const { return dac_; }
  std::string get_value() const { return value_; }
  // The value's unit name when it has a complete unit, else empty.
  std::string get_units() const { return units_; }
  bool is_valid() const { return valid_; }

 private:
  std::string dac_;
  std::string value_;
  std::string units_;
  bool valid_ = false;
};

}  // namespace qorin::parser
