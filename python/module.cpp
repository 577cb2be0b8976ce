// The qorin Python module: the library's units, values, annotations and
// number text, with the library's own answers and error messages.
#include "python/bindings.h"

#include <exception>
#include <new>

#ifndef QORIN_VERSION
#error "QORIN_VERSION must be defined by the build"
#endif

PYBIND11_MODULE(qorin, module) {
  namespace py = pybind11;
  module.doc() =
      "QorinCore for Python: unit catalogue and conversions, parameter values and\n"
      "annotations, number text and variable-name encoding.\n\n"
      "Example:\n"
      "    >>> qorin.convert(1, 'kHz', 'Hz')\n"
      "    1000.0\n"
      "    >>> str(qorin.Annotation('10 pF opt{ 1 pF to 20 pF }', unit_type='cap'))\n"
      "    '10pF opt{ 1pF to 20pF }'";
  module.attr("__version__") = QORIN_VERSION;

  // The library reports bad input with std::runtime_error and friends: a
  // Python caller expects ValueError, with the library's message. pybind11's
  // own exceptions (KeyError, TypeError ...) and Python errors pass through.
  py::register_exception_translator([](std::exception_ptr pending) {
    try {
      if (pending) std::rethrow_exception(pending);
    } catch (const py::builtin_exception&) {
      throw;
    } catch (const py::error_already_set&) {
      throw;
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception& e) {
      PyErr_SetString(PyExc_ValueError, e.what());
    }
  });

  qorin::python::bind_units(module);
  qorin::python::bind_parser(module);
  qorin::python::bind_text(module);
}
