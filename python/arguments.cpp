// Argument conversions shared by the binding sources.
#include "python/bindings.h"

namespace qorin::python {

std::string utf8_of(py::handle text) {
  if (!PyUnicode_Check(text.ptr())) {
    throw py::type_error(std::string("expected str, got ") + Py_TYPE(text.ptr())->tp_name);
  }
  // The str's own cached UTF-8 first: no copy in Python, and most texts have it.
  Py_ssize_t size = 0;
  if (const char* utf8 = PyUnicode_AsUTF8AndSize(text.ptr(), &size)) return std::string(utf8, static_cast<std::size_t>(size));
  PyErr_Clear();  // lone surrogates: written in their three-byte form
  py::object bytes = py::reinterpret_steal<py::object>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogatepass"));
  if (!bytes) throw py::error_already_set();
  return std::string(PyBytes_AS_STRING(bytes.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
}

py::str str_of(const std::string& bytes) {
  const auto size = static_cast<Py_ssize_t>(bytes.size());
  PyObject* text = PyUnicode_DecodeUTF8(bytes.data(), size, "surrogatepass");
  if (text == nullptr) {
    PyErr_Clear();
    text = PyUnicode_DecodeUTF8(bytes.data(), size, "surrogateescape");
  }
  if (text == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(text);
}

void raise(PyObject* type, const std::string& message) {
  PyErr_SetObject(type, str_of(message).ptr());
  throw py::error_already_set();
}

const units::UnitType* unit_type_of(py::handle type) {
  if (type.is_none()) return nullptr;
  if (!PyUnicode_Check(type.ptr()) && py::isinstance<units::UnitType>(type)) return type.cast<const units::UnitType*>();
  const std::string name = utf8_of(type);
  const units::UnitType* found = units::find_unit_type(name);
  if (found == nullptr) raise(PyExc_KeyError, "unknown unit type \"" + name + "\"");
  return found;
}

units::UnitAndMultiplier unit_of(py::handle unit, const units::UnitType* type) {
  if (!PyUnicode_Check(unit.ptr()) && py::isinstance<units::UnitAndMultiplier>(unit)) {
    const auto chosen = unit.cast<units::UnitAndMultiplier>();
    if (type != nullptr && chosen.type() != type) {
      raise(PyExc_KeyError, "unit type " + type->unit_type_name() + " has no unit \"" + chosen.unit_name() + "\"");
    }
    return chosen;
  }
  const std::string name = utf8_of(unit);
  // The lookups read a C string: «pF\0x» must not find pF.
  if (name.find('\0') != std::string::npos) raise(PyExc_KeyError, "unknown unit \"" + name + "\"");
  if (type == nullptr) {
    const units::UnitAndMultiplier found = units::find_unit(name.c_str());
    if (!found.is_valid()) raise(PyExc_KeyError, "unknown unit \"" + name + "\"");
    return found;
  }
  const units::UnitAndMultiplier found = units::find_unit_of_type(type, name.c_str());
  if (!found.is_valid()) raise(PyExc_KeyError, "unit type " + type->unit_type_name() + " has no unit \"" + name + "\"");
  return found;
}

}  // namespace qorin::python
