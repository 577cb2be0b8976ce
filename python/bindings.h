// The pieces of the qorin Python module: one binding source per library
// subsystem (units, parser, text), assembled by module.cpp, and the argument
// conversions they share.
#pragma once

#include <qorin/units.h>

#include <pybind11/pybind11.h>

#include <string>

namespace qorin::python {

namespace py = pybind11;

// Any Python str as the UTF-8 bytes the library reads. A lone surrogate is
// written in its three-byte form (Python's "surrogatepass"), so every str,
// NUL included, reaches the library and reads back unchanged through
// str_of. TypeError for anything but a str.
std::string utf8_of(py::handle text);
// The library's bytes as a str: UTF-8 with surrogates passed; a byte that is
// neither becomes a U+DC80..U+DCFF escape ("surrogateescape"), never an error.
py::str str_of(const std::string& bytes);

// Raises `type` (PyExc_KeyError ...) with a message that may hold any bytes
// of the caller's text, NUL included.
[[noreturn]] void raise(PyObject* type, const std::string& message);

// A unit_type argument: a type name, a UnitType, or None (null).
// KeyError: unknown unit type "capacity"
const units::UnitType* unit_type_of(py::handle type);
// A unit argument: a unit name or a Unit. With a type, the unit must be one
// of its own; without, the catalogue's first unit of that name.
// KeyError: unknown unit "pf"    KeyError: unit type cap has no unit "Hz"
units::UnitAndMultiplier unit_of(py::handle unit, const units::UnitType* type);

void bind_units(py::module_& module);
void bind_parser(py::module_& module);
void bind_text(py::module_& module);

}  // namespace qorin::python
