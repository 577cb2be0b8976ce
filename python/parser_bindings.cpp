// Parameter values and annotations: Value, Option, Annotation, canonicalize.
// Each object is read once, when it is made, with the checks the library
// makes for the qorin tool's annotate command; afterwards it is immutable.
#include "python/bindings.h"

#include <qorin/parser.h>
#include <qorin/text.h>

#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <vector>

namespace qorin::python {

namespace {

using parser::AnnotationCheck;
using parser::AnnotationDiagnostic;
using parser::AnnotationSettings;
using parser::ParamItemParser;
using parser::ParamOptionData;
using parser::ParserValue;

// unit_type None: no type imposed, the value's own unit (of any type) sets it.
AnnotationSettings settings_of(py::handle unit_type, bool dbmtow) {
  AnnotationSettings settings;
  settings.unit_type = unit_type_of(unit_type);
  settings.allow_any_unit = settings.unit_type == nullptr;
  settings.use_dbmtow_functions = dbmtow;
  return settings;
}

std::string repr_of(const char* kind, const std::string& text) {
  return std::string(kind) + "(" + py::repr(str_of(text)).cast<std::string>() + ")";
}

struct Value {
  // A value read from text as an annotation's nominal is read.
  Value(const std::string& text, const AnnotationSettings& settings) {
    parsed.set_use_dbmtow_functions(settings.use_dbmtow_functions);
    parsed.set_value_with_optional_unit_suffix(text, settings.unit_type, false, settings.allow_any_unit);
    describe(settings);
  }
  // A value the parser read: a nominal, or an option's start, stop or step.
  Value(const ParserValue& value, const AnnotationSettings& settings) : parsed(value) { describe(settings); }

  void describe(const AnnotationSettings& settings) {
    valid = parser::is_well_formed_nominal(parsed);
    canonical = parser::canonical_nominal(parsed, settings);
    mks = parser::value_in_mks(parsed);
    if (parsed.is_number()) number = toDouble_nothrow(parsed.value());
  }

  ParserValue parsed;
  bool valid = false;
  std::string canonical;
  std::optional<double> number;
  std::optional<double> mks;
};

struct Option {
  std::string kind;
  std::string text;
  bool enabled = true;
  parser::ParamOptionSweepType sweep = parser::sweep_invalid;
  std::optional<Value> start, stop, step;
};

Option option_of(const ParamItemParser& parser, const ParamOptionData& data) {
  // Values inside an option are never the nominal: no hidden unit is written out.
  const AnnotationSettings plain;
  Option option{parser.kind_name(&data), data.get_full_text(), data.enabled(), data.sweep_type(), {}, {}, {}};
  if (option.sweep >= parser::sweep_range) option.start.emplace(data.start(), plain);
  if (option.sweep == parser::sweep_range || option.sweep == parser::sweep_stepped_range) {
    option.stop.emplace(data.stop(), plain);
  }
  if (option.sweep == parser::sweep_stepped_range) option.step.emplace(data.step(), plain);
  return option;
}

struct Annotation {
  Annotation(const std::string& text, const AnnotationSettings& settings) {
    ParamItemParser parser;
    parser::check_annotation(parser, text, settings, &check);
    nominal.emplace(parser.get_nominal(), settings);
    unit_type = parser.unit_type();
    // In text order: the parser holds them backwards.
    for (auto it = parser.options().rbegin(); it != parser.options().rend(); ++it) {
      options.push_back(option_of(parser, **it));
    }
  }

  py::object find(const char* kind) const {
    for (const Option& option : options) {
      if (option.kind == kind) return py::cast(option);
    }
    return py::none();
  }

  AnnotationCheck check;
  std::optional<Value> nominal;
  const units::UnitType* unit_type = nullptr;
  std::vector<Option> options;
};

py::object optional_float(const std::optional<double>& x) { return x ? py::object(py::float_(*x)) : py::object(py::none()); }

py::object canonicalize(py::handle texts, py::handle unit_type, bool dbmtow) {
  const AnnotationSettings settings = settings_of(unit_type, dbmtow);
  parser::ParamItemParser parser;
  AnnotationCheck check;
  if (PyUnicode_Check(texts.ptr())) {
    parser::check_annotation(parser, utf8_of(texts), settings, &check);
    return str_of(check.canonical);
  }
  std::vector<std::string> batch;
  for (py::handle text : py::iter(texts)) batch.push_back(utf8_of(text));
  {
    // The batch runs on the library's strings only, so other threads run meanwhile.
    py::gil_scoped_release released;
    for (std::string& text : batch) {
      parser::check_annotation(parser, text, settings, &check);
      text.swap(check.canonical);
    }
  }
  py::list list(batch.size());
  for (std::size_t i = 0; i < batch.size(); ++i) PyList_SET_ITEM(list.ptr(), i, str_of(batch[i]).release().ptr());
  return std::move(list);
}

}  // namespace

void bind_parser(py::module_& module) {
  const auto reference = py::return_value_policy::reference;

  py::class_<Value>(module, "Value",
                    "One parameter value with its unit, read as an annotation's nominal is.\n"
                    "Never raises on bad text: valid is then False.\n\n"
                    "Example:\n"
                    "    >>> v = qorin.Value('10 pF', unit_type='cap')\n"
                    "    >>> v.canonical, v.value_text, v.unit, v.mks\n"
                    "    ('10pF', '10', 'pF', 1e-11)")
      .def(py::init([](py::handle text, py::handle unit_type, bool dbmtow) {
             return Value(utf8_of(text), settings_of(unit_type, dbmtow));
           }),
           py::arg("text"), py::arg("unit_type") = py::none(), py::arg("dbmtow") = true,
           "unit_type: a name or UnitType; None lets the value's unit, of any type, set it.\n"
           "dbmtow: power in dBm/dBW written as dbmtow(10), else as 10dBm.")
      .def_readonly("valid", &Value::valid,
                    "False when the value has no unit and is not empty, a number, a variable,\n"
                    "a quoted string or a file reference (the nominal warning of `qorin annotate`).")
      .def_property_readonly("canonical", [](const Value& v) { return str_of(v.canonical); })
      .def_property_readonly("value_text", [](const Value& v) { return str_of(v.parsed.value()); },
                             "The value without its unit: '10' for '10 pF'.")
      .def_property_readonly(
          "unit",
          [](const Value& v) -> py::object {
            const units::UnitAndMultiplier& unit = v.parsed.units();
            return unit.is_valid() ? py::object(str_of(unit.unit_name())) : py::object(py::none());
          },
          "The unit's name, or None.")
      .def_property_readonly("unit_type", [](const Value& v) { return v.parsed.unit_type(); }, reference,
                             "The unit type the value was read with or found, or None.")
      .def_property_readonly("number", [](const Value& v) { return optional_float(v.number); },
                             "The value as a float when it is a number, else None.")
      .def_property_readonly("mks", [](const Value& v) { return optional_float(v.mks); },
                             "The number in MKS units (a number without unit as it is), else None.")
      .def("__str__", [](const Value& v) { return str_of(v.canonical); })
      .def("__repr__", [](const Value& v) { return repr_of("Value", v.canonical); });

  py::class_<Option>(module, "Option", "One option of an annotation: opt{ }, stat{ }, tune{ } or doe{ }.")
      .def_readonly("kind", &Option::kind, "'opt', 'stat', 'tune' or 'doe'")
      .def_readonly("enabled", &Option::enabled, "False when written with 'no' in front (noopt{ ... }).")
      .def_property_readonly(
          "sweep",
          [](const Option& o) -> py::object {
            if (o.sweep == parser::sweep_invalid) return py::none();
            return py::str(parser::sweep_type_name(o.sweep));
          },
          "'empty', 'range', 'stepped range', 'deviation', 'percent deviation', or None when invalid.")
      .def_readonly("start", &Option::start, "The range's start or the deviation, or None.")
      .def_readonly("stop", &Option::stop, "A range's stop, or None.")
      .def_readonly("step", &Option::step, "A stepped range's step, or None.")
      .def_property_readonly("text", [](const Option& o) { return str_of(o.text); },
                             "The option's canonical text; an invalid option as typed.")
      .def("__str__", [](const Option& o) { return str_of(o.text); })
      .def("__repr__", [](const Option& o) { return repr_of("Option", o.text); });

  py::class_<Annotation>(module, "Annotation",
                         "A parameter annotation: a nominal value and its options, checked as\n"
                         "`qorin annotate` checks it. Never raises on bad text.\n\n"
                         "Example:\n"
                         "    >>> a = qorin.Annotation('10 pF opt{ 1 pF to 20 pF }', unit_type='cap')\n"
                         "    >>> a.valid, a.canonical, a.opt.sweep, a.opt.stop.mks\n"
                         "    (True, '10pF opt{ 1pF to 20pF }', 'range', 2e-11)")
      .def(py::init([](py::handle text, py::handle unit_type, bool dbmtow) {
             return std::make_unique<Annotation>(utf8_of(text), settings_of(unit_type, dbmtow));
           }),
           py::arg("text"), py::arg("unit_type") = py::none(), py::arg("dbmtow") = true,
           "unit_type: a name or UnitType; None lets the nominal's unit, of any type, set it.")
      .def_property_readonly("valid", [](const Annotation& a) { return !a.check.has(AnnotationDiagnostic::error); },
                             "False when an option is invalid. A bad nominal is only a warning: see nominal.valid.")
      .def_property_readonly("canonical", [](const Annotation& a) { return str_of(a.check.canonical); })
      .def_readonly("nominal", &Annotation::nominal)
      .def_property_readonly("unit_type", [](const Annotation& a) { return a.unit_type; }, reference)
      .def_readonly("options", &Annotation::options, "Every option, in text order.")
      .def_property_readonly("opt", [](const Annotation& a) { return a.find("opt"); })
      .def_property_readonly("stat", [](const Annotation& a) { return a.find("stat"); })
      .def_property_readonly("tune", [](const Annotation& a) { return a.find("tune"); })
      .def_property_readonly("doe", [](const Annotation& a) { return a.find("doe"); })
      .def_property_readonly(
          "diagnostics",
          [](const Annotation& a) {
            py::list list;
            for (const AnnotationDiagnostic& d : a.check.diagnostics) {
              list.append(py::make_tuple(d.severity == AnnotationDiagnostic::error ? "error" : "warning", str_of(d.message)));
            }
            return list;
          },
          "[(severity, message)]: what `qorin annotate` reports, errors and warnings.")
      .def("__str__", [](const Annotation& a) { return str_of(a.check.canonical); })
      .def("__repr__", [](const Annotation& a) { return repr_of("Annotation", a.check.canonical); });

  module.def(
      "canonicalize",
      [](py::handle texts, py::handle unit_type, bool dbmtow) { return canonicalize(texts, unit_type, dbmtow); },
      py::arg("text_or_list"), py::arg("unit_type") = "num", py::arg("dbmtow") = true,
      "The canonical text of an annotation, or a list of them for any iterable of\n"
      "str (checked in one call, other Python threads running meanwhile).\n"
      "unit_type None lets each nominal's unit set the type.\n\n"
      "Example: canonicalize('10 pF  opt{ 1 pF to 20 pF }', unit_type='cap') => '10pF opt{ 1pF to 20pF }'");
}

}  // namespace qorin::python
