// Annotations as users write them, realistic and odd, each with the parser
// settings it is read with, for `qorin demo`.
#pragma once

#include <qorin/parser.h>

#include <string>

namespace qorin::tool {

struct AnnotationExample {
  const char* shows;      // what the example demonstrates
  const char* unit_type;  // catalogue type name ("cap"); null for none
  bool any_unit;          // the nominal may carry any unit (unit_type is then null)
  bool use_dbmtow;        // power values written as dbmtow(...)
  const char* scale_to;   // unit given to unitless values afterwards, or null
  const char* text;
};

inline constexpr AnnotationExample kAnnotationExamples[] = {
    // Every option kind, valid.
    {"optimised between two values, with a gaussian spread in percent", "cap", false, true, nullptr,
     "10 pF opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }"},
    {"optimised in parts per thousand", "freq", false, true, nullptr, "2.4 GHz opt{ ppt 2 GHz to 3 GHz }"},
    {"optimised over discrete steps", "ind", false, true, nullptr, "5nH opt{ discrete 1nH to 10nH by 1nH }"},
    {"uniform spread between two values", "res", false, true, nullptr, "50 Ohm stat{ uniform 45 Ohm to 55 Ohm }"},
    {"spread taken from a named component (the name's blanks are dropped)", "res", false, true, nullptr,
     "50 stat{ distcompname = my comp }"},
    {"lognormal spread and a stepped tuning range", "lng", false, true, nullptr,
     "100 um stat{ lognormal +/- 2 um } tune{ 90 um to 110 um by 1 um }"},
    {"tuned on a logarithmic scale", "freq", false, true, nullptr, "1 GHz tune{ 1 GHz to 10 GHz logScale }"},
    {"design of experiments over a percent deviation", "cap", false, true, nullptr, "10 pF doe{ +/- 10 % }"},
    {"discrete statistics", "num", false, true, nullptr, "3 stat{ discrete 1 to 5 by 1 }"},
    {"all four kinds at once", "volt", false, true, nullptr,
     "3.3 V opt{ 3 V to 3.6 V } stat{ gauss +/- 1 % } tune{ 3 V to 3.6 V by 0.1 V } doe{ 3 V to 3.6 V }"},
    {"values given as variables", "freq", false, true, nullptr, "f0 GHz opt{ f_lo to f_hi }"},
    {"an expression before its unit is kept in parentheses", "freq", false, true, nullptr,
     "1 GHz opt{ a+b GHz to 3 GHz }"},
    {"a value looked up in a data file", "cap", false, true, nullptr, "file{ds1, 3} pF opt{ 1 pF to 5 pF }"},
    // Disabled and invalid options.
    {"disabled options keep their settings", "cap", false, true, nullptr,
     "10 pF noopt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % }"},
    {"invalid: a stepped range needs \"discrete\" (kept as typed)", "cap", false, true, nullptr,
     "10 pF opt{ 1 to 2 by 0.1 }"},
    {"invalid: statistics need a distribution", "cap", false, true, nullptr, "10 pF stat{ 1 to 2 }"},
    {"invalid: tuning needs a step or logScale", "cap", false, true, nullptr, "10 pF tune{ 1 to 2 }"},
    {"invalid: an unconstrained optimisation has no sweep to parse", "res", false, true, nullptr,
     "50 opt{ unconst }"},
    {"invalid: a range without its end", "freq", false, true, nullptr, "1 GHz opt{ 1 GHz to }"},
    {"invalid: an unknown unit in the two-word form", "cap", false, true, nullptr, "10 pF opt{ 1 pF to 2 xF }"},
    {"invalid: no component name", "res", false, true, nullptr, "50 stat{ distcompname = }"},
    // Power in dBm, both notations.
    {"power in dBm, written with dbmtow()", "power", false, true, nullptr, "30 dbm opt{ 20 dBm to 40 dBm }"},
    {"power in dBm, written with its unit", "power", false, false, nullptr, "30 dbm opt{ 20 dBm to 40 dBm }"},
    {"dbmtow() read back", "power", false, true, nullptr, "dbmtow(30) stat{ gauss +/- 1 dBm }"},
    // Unitless values rescaled: a bare number is read as MKS.
    {"bare numbers in farad, rescaled to pF", "cap", false, true, "pF", "1e-11 opt{ 1e-12 to 2e-11 }"},
    {"bare numbers in hertz, rescaled to kHz; values with a unit stay", "freq", false, true, "kHz",
     "1 opt{ 2 to 3 MHz } tune{ 1 to 2 by 1 }"},
    // Any unit: the nominal decides the type for the options.
    {"any unit: the nominal's unit sets the type", nullptr, true, true, nullptr, "3 mm opt{ 1 mm to 5 mm }"},
    // Odd texts and the rules they exercise.
    {"a second option of one kind is not pulled", "num", false, true, nullptr, "1 opt{ 1 to 2 } opt{ 3 to 4 }"},
    {"an unknown keyword stops the pulling", "num", false, true, nullptr, "1 foo{ x } opt{ 1 to 2 }"},
    {"quotes inside braces: no option", "num", false, true, nullptr, "1 opt{ 'a' }"},
    {"keywords are case-sensitive", "num", false, true, nullptr, "1 Opt{ 1 to 2 }"},
    {"a tab is not a blank", "num", false, true, nullptr, "1\topt{ 1 to 2 }"},
    {"blank before the brace", "num", false, true, nullptr, "1 opt { 1 to 2 }"},
    {"extra blanks go to the nominal", "num", false, true, nullptr, "1   opt{ 1 to 2 }   "},
    {"an empty option body", "num", false, true, nullptr, "opt{}"},
    {"\"no\" alone is no keyword", "num", false, true, nullptr, "1 no{ 1 to 2 }"},
    {"ppt with nothing after it", "num", false, true, nullptr, "1 opt{ ppt }"},
    {"+/- without a delta still makes a deviation", "num", false, true, nullptr, "1 stat{ gauss +/- }"},
    {"+/- with too many words still makes a deviation", "num", false, true, nullptr, "1 stat{ gauss +/- 1 2 3 }"},
    {"a stepped range with two-word values", "cap", false, true, nullptr,
     "1 pF tune{ 1 pF to 2 pF by 0.1 pF }"},
    {"scale letters alone", "freq", false, true, nullptr, "1 k opt{ 500 to 2 k }"},
    {"no nominal at all", "num", false, true, nullptr, "   "},
    {"disabled options of two kinds", "num", false, true, nullptr, "1 nodoe{ 1 to 2 } notune{ 1 to 2 by 1 }"},
};

// Checks the example's text with its settings, then rescales unitless values
// when the example asks for it.
inline parser::AnnotationCheck read_example(parser::ParamItemParser& parser, const AnnotationExample& example) {
  parser::AnnotationCheck check;
  parser::check_annotation(parser, example.text,
                           {example.unit_type ? units::find_unit_type(example.unit_type) : nullptr,
                            example.any_unit, example.use_dbmtow},
                           &check);
  if (example.scale_to) {
    parser.scale_all_unitless_values(units::find_unit(example.scale_to));
    parser.reformat();
    check.canonical = parser.get_combined_string();
  }
  return check;
}

}  // namespace qorin::tool
