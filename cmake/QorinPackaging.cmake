# Release packages, made by cpack in a build folder (scripts/package makes
# those of both platforms): on Windows one zip of the whole installation, on
# Linux a Debian package per install component, laid out as Debian wants them
# when QORIN_DEBIAN_LAYOUT is on (the Debian build of scripts/package).
set(CPACK_PACKAGE_NAME QorinCore)
set(CPACK_PACKAGE_VENDOR "QorinCore developers")
set(CPACK_PACKAGE_CONTACT "QorinCore developers <qorincore@example.org>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 2)

# Code compiled in from header-only libraries, and on Windows the MinGW
# runtime shipped beside it, comes with its licence: THIRD-PARTY-NOTICES
# gathers the copyright files of the Debian packages they were built from.
# qorin_third_party_notices(OUT "WHAT|DEBIAN-PACKAGE"...)
function(qorin_third_party_notices out)
  set(text "QorinCore contains code of the following projects, under their own licences.\n")
  foreach(entry IN LISTS ARGN)
    string(REPLACE "|" ";" entry "${entry}")
    list(GET entry 0 what)
    list(GET entry 1 package)
    set(copyright /usr/share/doc/${package}/copyright)
    if(NOT EXISTS ${copyright})
      message(FATAL_ERROR "${copyright} is missing: run ./scripts/bootstrap")
    endif()
    file(READ ${copyright} notice)
    string(APPEND text "\n==== ${what} (from the Debian package ${package})\n\n${notice}")
  endforeach()
  file(WRITE ${out} "${text}")
endfunction()
set(library_notices "{fmt}, in the library|libfmt-dev" "utfcpp, in the library|libutfcpp-dev"
    "fast_float, in the library|libfast-float-dev")
set(tool_notices "CLI11, in qorin|libcli11-dev" "JSON for Modern C++, in qorin|nlohmann-json3-dev")
set(python_notices "pybind11, in the Python module|pybind11-dev")
set(windows_notices
    "the GCC runtime: libstdc++-6.dll and libgcc_s_seh-1.dll|gcc-mingw-w64-x86-64-posix-runtime"
    "the MinGW-w64 runtime: libwinpthread-1.dll and the start-up code|mingw-w64-x86-64-dev")

if(NOT QORIN_DEBIAN_LAYOUT)
  set(notices ${library_notices})
  if(TARGET qorin)
    list(APPEND notices ${tool_notices})
  endif()
  if(TARGET qorin_python)
    list(APPEND notices ${python_notices})
  endif()
  if(WIN32)
    list(APPEND notices ${windows_notices})
  endif()
  qorin_third_party_notices(${PROJECT_BINARY_DIR}/THIRD-PARTY-NOTICES ${notices})
  install(FILES LICENSE CHANGELOG.md README.md ${PROJECT_BINARY_DIR}/THIRD-PARTY-NOTICES
          DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
endif()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME QorinCore-${PROJECT_VERSION}-windows-x64)
  include(CPack)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(deb_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# Package names as Debian policy has them: the runtime package is named after
# the soname (libQorinCore.so.0.1: libqorincore0.1), so two releases that
# break the ABI install side by side.
string(TOLOWER "lib${PROJECT_NAME}${QORIN_SOVERSION}" runtime_package)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqorincore-dev)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME qorin)
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-qorin)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)

set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "C++ core utility library for circuit simulation
QorinCore gives the programs of a circuit and electromagnetic simulation
suite a catalogue of physical units, the parser and formatter of parameter
values and of their optimisation, statistics, tuning and design-of-experiment
annotations, number and text conversion, diagnostics and logging, and UTF-8
paths and files.

This package holds the shared library.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "C++ core utility library for circuit simulation (development files)
QorinCore gives the programs of a circuit and electromagnetic simulation
suite units, parameter annotations, text and diagnostics.

This package holds the headers, the CMake package QorinCore and
QorinCore.pc for pkg-config.")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "check and convert parameter values, units and annotations
The qorin tool checks and canonicalises the annotations that mark design
parameters for optimisation, statistics, tuning and design of experiments,
converts values between units, lists the unit catalogue and runs a program
with a decorated log of its output.")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "Python 3 module of the QorinCore utility library
The qorin module gives Python scripts the unit catalogue, conversions of
numbers and NumPy arrays, and the annotation parser of QorinCore.")

# Dependencies on shared libraries are computed by dpkg-shlibdeps; the
# runtime package declares its own in a shlibs file. The tool and the module
# need the runtime package being built beside them: dpkg-shlibdeps finds its
# shlibs file through a copy of the library under a DEBIAN folder (below).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(shlibs_root ${PROJECT_BINARY_DIR}/debian-shlibs)
file(WRITE ${shlibs_root}/DEBIAN/shlibs
     "libQorinCore ${QORIN_SOVERSION} ${runtime_package} (>= ${deb_version})\n")
add_custom_command(TARGET QorinCore POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:QorinCore>
          ${shlibs_root}/lib/$<TARGET_SONAME_FILE_NAME:QorinCore>)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${shlibs_root}/lib)
# The loader's cache is updated by libc's trigger.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)  # the -dev package's exact version
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
if(TARGET qorin_python)
  # The module is built for one Python version, which its file name names;
  # it takes and gives NumPy arrays.
  math(EXPR python_next_minor "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "python3 (>= ${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}), python3 (<< ${Python_VERSION_MAJOR}.${python_next_minor}), python3-numpy")
endif()

if(QORIN_DEBIAN_LAYOUT)
  # Every package carries its copyright, its Debian changelog and the
  # project's changelog in /usr/share/doc/PACKAGE, compressed without time
  # stamps so that two builds give the same bytes.
  set(debian_docs ${PROJECT_BINARY_DIR}/debian-docs)
  file(READ LICENSE license)
  string(REGEX REPLACE "^MIT License\n\n(Copyright[^\n]*)\n\n" "" license_body "${license}")
  set(QORIN_COPYRIGHT_LINE "${CMAKE_MATCH_1}")
  string(REGEX REPLACE "\n\n" "\n.\n" license_body "${license_body}")
  string(REGEX REPLACE "\n$" "" license_body "${license_body}")
  string(REPLACE "\n" "\n " QORIN_LICENSE_TEXT " ${license_body}")
  string(REGEX REPLACE "^Copyright \\(c\\) " "" QORIN_COPYRIGHT_LINE "${QORIN_COPYRIGHT_LINE}")
  configure_file(cmake/debian/copyright.in ${debian_docs}/copyright @ONLY)
  execute_process(COMMAND date -u -R -d "${QORIN_RELEASE_DATE}"
                  OUTPUT_VARIABLE QORIN_RELEASE_DATE_RFC2822 OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  set(QORIN_DEB_VERSION ${deb_version})
  configure_file(cmake/debian/changelog.Debian.in ${debian_docs}/changelog.Debian @ONLY)
  configure_file(CHANGELOG.md ${debian_docs}/changelog COPYONLY)
  foreach(file changelog.Debian changelog)
    execute_process(COMMAND gzip -9nkf ${debian_docs}/${file} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  set(runtime_notices ${library_notices})
  set(tools_notices "{fmt}, in qorin|libfmt-dev" ${tool_notices})
  foreach(component runtime development tools python)
    string(TOUPPER ${component} upper)
    if((component STREQUAL "tools" AND NOT TARGET qorin)
       OR (component STREQUAL "python" AND NOT TARGET qorin_python))
      continue()
    endif()
    set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${debian_docs}/copyright ${debian_docs}/changelog.Debian.gz
                  ${debian_docs}/changelog.gz
            DESTINATION ${doc_dir} COMPONENT ${component})
    if(${component}_notices)
      qorin_third_party_notices(${debian_docs}/${component}/THIRD-PARTY-NOTICES ${${component}_notices})
      install(FILES ${debian_docs}/${component}/THIRD-PARTY-NOTICES
              DESTINATION ${doc_dir} COMPONENT ${component})
    endif()
  endforeach()
endif()

include(CPack)
