// The unit catalogue and value conversions: UnitType, Unit, unit_types,
// unit_type, to_mks, from_mks, convert.
#include "python/bindings.h"

#include <qorin/units.h>

#include <pybind11/numpy.h>

#include <utility>
#include <vector>

namespace qorin::python {

namespace {

using units::UnitAndMultiplier;
using units::UnitType;
using Array = py::array_t<double, py::array::c_style | py::array::forcecast>;

std::string text_of(double value) { return py::repr(py::float_(value)).cast<std::string>(); }

// One number: anything with __float__. TypeError: must be real number, not str
double number_of(py::handle value) {
  const double x = PyFloat_AsDouble(value.ptr());
  if (x == -1.0 && PyErr_Occurred()) throw py::error_already_set();
  return x;
}

// TypeError for a sequence that holds anything but numbers.
Array array_of(py::handle values) {
  Array array = Array::ensure(values);
  if (!array) raise(PyExc_TypeError, "expected a number, a sequence of numbers or an array");
  return array;
}

// A str, bytes or a number is one value; any other sequence or an array is an array.
bool is_array_argument(py::handle value) {
  if (py::isinstance<py::array>(value)) return true;
  return PySequence_Check(value.ptr()) && !PyUnicode_Check(value.ptr()) && !PyBytes_Check(value.ptr());
}

py::object to_mks(py::handle value, const UnitAndMultiplier& unit) {
  if (!is_array_argument(value)) return py::float_(units::convert_parm_value_to_mks_units(number_of(value), unit));
  Array in = array_of(value);
  Array out(std::vector<py::ssize_t>(in.shape(), in.shape() + in.ndim()));
  {
    py::gil_scoped_release released;
    units::convert_parm_values_to_mks_units(in.data(), static_cast<std::size_t>(in.size()), unit, out.mutable_data());
  }
  return std::move(out);
}

[[noreturn]] void cannot_represent(double mks, const UnitAndMultiplier& unit) {
  raise(PyExc_ValueError, text_of(mks) + " (MKS " + unit.type()->get_mks_unit() + ") cannot be represented in " +
                        unit.unit_name());
}

py::object from_mks(py::handle value, const UnitAndMultiplier& unit) {
  if (!is_array_argument(value)) {
    const double mks = number_of(value);
    double result = 0.0;
    if (!units::convert_parm_value_from_mks_units(mks, unit, &result)) cannot_represent(mks, unit);
    return py::float_(result);
  }
  Array in = array_of(value);
  Array out(std::vector<py::ssize_t>(in.shape(), in.shape() + in.ndim()));
  const auto count = static_cast<std::size_t>(in.size());
  std::size_t converted = 0;
  {
    py::gil_scoped_release released;
    converted = units::convert_parm_values_from_mks_units(in.data(), count, unit, out.mutable_data());
  }
  if (converted != count) {
    // The batch copies a refused value through: name the first one.
    double result = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
      if (!units::convert_parm_value_from_mks_units(in.data()[i], unit, &result)) cannot_represent(in.data()[i], unit);
    }
  }
  return std::move(out);
}

// The type that holds both units: the one named, else the first in the
// catalogue («ft» to «mi» is dist, though «ft» alone is lng).
std::pair<UnitAndMultiplier, UnitAndMultiplier> units_of_one_type(py::handle from, py::handle to,
                                                                  py::handle unit_type) {
  if (const UnitType* type = unit_type_of(unit_type)) return {unit_of(from, type), unit_of(to, type)};
  const UnitAndMultiplier first_from = unit_of(from, nullptr);
  const UnitAndMultiplier first_to = unit_of(to, nullptr);
  if (first_from.type() == first_to.type()) return {first_from, first_to};
  const std::string from_name = first_from.unit_name();
  const std::string to_name = first_to.unit_name();
  for (const UnitType* type : units::find_unit_types_with(from_name)) {
    const UnitAndMultiplier in_type = units::find_unit_of_type(type, to_name.c_str());
    if (in_type.is_valid()) return {units::find_unit_of_type(type, from_name.c_str()), in_type};
  }
  raise(PyExc_ValueError, "cannot convert " + from_name + " to " + to_name + ": no unit type has both");
}

py::object convert(py::handle value, py::handle from, py::handle to, py::handle unit_type) {
  const auto [from_unit, to_unit] = units_of_one_type(from, to, unit_type);
  return from_mks(to_mks(value, from_unit), to_unit);
}

py::list units_of(const UnitType& type) {
  py::list list;
  for (const units::UnitMultiplier& multiplier : type.multipliers()) list.append(UnitAndMultiplier(&type, &multiplier));
  return list;
}

}  // namespace

void bind_units(py::module_& module) {
  const auto reference = py::return_value_policy::reference;

  // The catalogue lives as long as the library: Python never owns its entries.
  py::class_<UnitType, std::unique_ptr<UnitType, py::nodelete>>(
      module, "UnitType", "One quantity of the catalogue (freq, res, cap ...) with its units.")
      .def_property_readonly("name", &UnitType::unit_type_name, "'cap'")
      .def_property_readonly("description", &UnitType::description)
      .def_property_readonly("mks_unit", &UnitType::get_mks_unit, "The unit every conversion goes through: 'F'")
      .def_property_readonly("legacy_code", [](const UnitType& t) { return static_cast<int>(t.get_legacy_type()); })
      .def_property_readonly("uses_scale_factors", &UnitType::uses_scale_factors)
      .def_property_readonly("units", &units_of, "Every unit of the type, in catalogue order.")
      .def(
          "unit", [](const UnitType& type, py::handle name) { return unit_of(name, &type); }, py::arg("name"),
          "The type's unit of that name.\n\nExample: unit_type('cap').unit('pF').factor => 1e-12\n"
          "KeyError: unit type cap has no unit \"Hz\"")
      .def("__eq__", [](const UnitType& a, py::handle b) {
        return py::isinstance<UnitType>(b) && &a == b.cast<const UnitType*>();
      })
      .def("__hash__", [](const UnitType& t) { return std::hash<const void*>()(&t); })
      .def("__repr__", [](const UnitType& t) { return "UnitType(" + py::repr(str_of(t.unit_type_name())).cast<std::string>() + ")"; });

  py::class_<UnitAndMultiplier>(module, "Unit", "One unit of a type: its name and its factor to the type's MKS unit.")
      .def_property_readonly("name", &UnitAndMultiplier::unit_name, "'pF'")
      .def_property_readonly(
          "factor", [](const UnitAndMultiplier& u) { return u.multiplier()->multipler(); },
          "To MKS: 1e-12 for pF. dBm and dBW are logarithmic (0 here); use to_mks.")
      .def_property_readonly("unit_type", &UnitAndMultiplier::type, reference)
      .def_property_readonly(
          "scale_letter",
          [](const UnitAndMultiplier& u) -> py::object {
            const char letter = u.multiplier()->suffix();
            return letter == 0 ? py::object(py::none()) : py::object(py::str(std::string(1, letter)));
          },
          "The bare letter that stands for the unit after a number ('p' for pF), or None.")
      .def("__eq__", [](const UnitAndMultiplier& a, py::handle b) {
        if (!py::isinstance<UnitAndMultiplier>(b)) return false;
        const auto other = b.cast<UnitAndMultiplier>();
        return a.type() == other.type() && a.multiplier() == other.multiplier();
      })
      .def("__hash__", [](const UnitAndMultiplier& u) { return std::hash<const void*>()(u.multiplier()); })
      .def("__repr__", [](const UnitAndMultiplier& u) {
        return "Unit(" + py::repr(str_of(u.unit_name())).cast<std::string>() + ", unit_type=" +
               py::repr(str_of(u.type()->unit_type_name())).cast<std::string>() + ")";
      });

  module.def(
      "unit_types",
      [] {
        py::list list;
        for (const UnitType& type : units::get_all_units()) list.append(py::cast(&type, py::return_value_policy::reference));
        return list;
      },
      "Every unit type, in catalogue order.\n\nExample: [t.name for t in unit_types()][:3] => ['string', 'num', 'freq']");
  module.def(
      "unit_type", [](py::handle name) { return unit_type_of(name); }, py::arg("name"), reference,
      "The unit type of that name.\n\nExample: unit_type('cap').mks_unit => 'F'\nKeyError: unknown unit type \"capacity\"");

  module.def(
      "to_mks",
      [](py::handle value, py::handle unit, py::handle unit_type) {
        return to_mks(value, unit_of(unit, unit_type_of(unit_type)));
      },
      py::arg("value"), py::arg("unit"), py::arg("unit_type") = py::none(),
      "A value in `unit` in its type's MKS unit: a float for a number, a float64\n"
      "numpy.ndarray of the same shape for a sequence or an array. Without\n"
      "unit_type the catalogue's first unit of that name is meant.\n\n"
      "Example: to_mks(2, 'GHz') => 2e9    to_mks(30, 'dBm') => 1.0    to_mks([1, 2], 'pF') => array([1e-12, 2e-12])");
  module.def(
      "from_mks",
      [](py::handle value, py::handle unit, py::handle unit_type) {
        return from_mks(value, unit_of(unit, unit_type_of(unit_type)));
      },
      py::arg("value"), py::arg("unit"), py::arg("unit_type") = py::none(),
      "The inverse of to_mks, in the same shapes.\n\n"
      "Example: from_mks(1, 'dBm') => 30.0    from_mks(1e-11, 'pF') => 10.0\n"
      "ValueError: 0.0 (MKS W) cannot be represented in dBm");
  module.def(
      "convert",
      [](py::handle value, py::handle from, py::handle to, py::handle unit_type) {
        return convert(value, from, to, unit_type);
      },
      py::arg("value"), py::arg("from_unit"), py::arg("to_unit"), py::arg("unit_type") = py::none(),
      "A value from one unit to another of the same type, through MKS. Without\n"
      "unit_type the first type that has both units is used.\n\n"
      "Example: convert(1, 'kHz', 'Hz') => 1000.0    convert(1, 'mi', 'ft') => 5280.0 (about)\n"
      "ValueError: cannot convert GHz to pF: no unit type has both");
}

}  // namespace qorin::python
