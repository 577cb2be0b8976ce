// Number text and variable-name encoding: to_double, is_valid_number,
// format_double, encode_name, decode_name.
#include "python/bindings.h"

#include <qorin/text.h>

namespace qorin::python {

namespace {

// Names are encoded as the bytes of their UTF-8 text: a str that has none
// (a lone surrogate) is refused rather than encoded as bytes no decoder
// would give back.
std::string strict_utf8_of(py::handle text) {
  if (!PyUnicode_Check(text.ptr())) return utf8_of(text);  // its TypeError
  py::object bytes = py::reinterpret_steal<py::object>(PyUnicode_AsUTF8String(text.ptr()));
  if (!bytes) {
    PyErr_Clear();
    throw py::value_error("name " + py::repr(text).cast<std::string>() + " is not valid Unicode text");
  }
  return std::string(PyBytes_AS_STRING(bytes.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
}

py::str decode_name(py::handle text, py::handle prefix) {
  const std::string encoded = utf8_of(text);
  const auto [name, ok] = decode_from_variable_name(encoded, utf8_of(prefix));
  if (!ok) throw py::value_error("cannot decode " + py::repr(text).cast<std::string>() + " as a variable name");
  PyObject* decoded = PyUnicode_DecodeUTF8(name.data(), static_cast<Py_ssize_t>(name.size()), "strict");
  if (decoded == nullptr) {
    PyErr_Clear();
    throw py::value_error(py::repr(text).cast<std::string>() + " decodes to bytes that are not UTF-8");
  }
  return py::reinterpret_steal<py::str>(decoded);
}

}  // namespace

void bind_text(py::module_& module) {
  module.def(
      "to_double", [](py::handle text) { return toDouble_or_throw(utf8_of(text)); }, py::arg("text"),
      "A whole text read as a decimal number, correctly rounded, in any locale.\n\n"
      "Example: to_double(' 2.5e3') => 2500.0\n"
      "ValueError: Expected a string containing a number   (for '3 GHz', 'inf', '0x10')");
  module.def(
      "is_valid_number", [](py::handle text) { return isValidNumber(utf8_of(text)); }, py::arg("text"),
      "Whether to_double reads the text.\n\nExample: is_valid_number('5.') => True    is_valid_number('.') => False");
  module.def(
      "format_double", [](double x, int precision) { return fromDouble(x, general, precision, 0); }, py::arg("x"),
      py::arg("precision") = 6,
      "x as printf's %.<precision>g writes it in the C locale, the same on every platform.\n\n"
      "Example: format_double(1e20) => '1e+20'    format_double(0.1, 17) => '0.10000000000000001'");
  module.def(
      "encode_name",
      [](py::handle name, py::handle prefix) {
        return str_of(encode_to_variable_name(strict_utf8_of(name), utf8_of(prefix)));
      },
      py::arg("name"), py::arg("prefix") = "",
      "Any name as letters, digits and underscores behind `prefix`, from the bytes\n"
      "of its UTF-8 text.\n\nExample: encode_name('a.b c') => 'a_2eb_20c'    encode_name('1st', 'v') => 'vZ_Z1st'");
  module.def(
      "decode_name", [](py::handle text, py::handle prefix) { return decode_name(text, prefix); }, py::arg("text"),
      py::arg("prefix") = "",
      "The inverse of encode_name.\n\nExample: decode_name('a_2eb_20c') => 'a.b c'\n"
      "ValueError: cannot decode 'q_2E' as a variable name");
}

}  // namespace qorin::python
