include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS QorinCore EXPORT QorinCoreTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/qorin DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_BINARY_DIR}/include/qorin/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qorin)
install(FILES LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The installed package may be moved or installed with --prefix elsewhere:
# the tool finds the library relative to itself (on Windows the DLL sits
# beside it anyway), and QorinCore.pc names its folders relative to its own.
function(qorin_relative_path out from to)
  file(RELATIVE_PATH path ${CMAKE_INSTALL_PREFIX}/${from} ${CMAKE_INSTALL_PREFIX}/${to})
  string(REGEX REPLACE "/$" "" path "${path}")
  if(path STREQUAL "")
    set(path .)
  endif()
  set(${out} ${path} PARENT_SCOPE)
endfunction()

if(TARGET qorin)
  qorin_relative_path(bin_to_lib ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(qorin PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS qorin RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The Python module goes into the prefix's own package folder, with its type
# stub beside it, and finds the library relative to itself like the tool.
if(TARGET qorin_python)
  set(QORIN_PYTHON_INSTALL_DIR "lib/python${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}/site-packages"
      CACHE STRING "Where the qorin Python module is installed, relative to the prefix")
  qorin_relative_path(python_to_lib ${QORIN_PYTHON_INSTALL_DIR} ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(qorin_python PROPERTIES INSTALL_RPATH "$ORIGIN/${python_to_lib}")
  install(TARGETS qorin_python LIBRARY DESTINATION ${QORIN_PYTHON_INSTALL_DIR})
  install(FILES python/qorin.pyi DESTINATION ${QORIN_PYTHON_INSTALL_DIR})
endif()

set(QORIN_FMT_HEADER_ONLY OFF)
set(QORIN_PC_REQUIRES fmt)
set(QORIN_PC_CFLAGS)
if(CMAKE_CROSSCOMPILING)
  # Callers on Windows get {fmt} header-only from the package itself, and
  # the MinGW runtime beside the DLL.
  set(QORIN_FMT_HEADER_ONLY ON)
  set(QORIN_PC_REQUIRES)
  set(QORIN_PC_CFLAGS " -DFMT_HEADER_ONLY=1")
  install(DIRECTORY ${QORIN_STAGED_HEADERS}/fmt DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(FILES ${QORIN_MINGW_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QorinCore)
install(EXPORT QorinCoreTargets NAMESPACE QorinCore:: DESTINATION ${config_dir})
configure_package_config_file(cmake/QorinCoreConfig.cmake.in
  ${PROJECT_BINARY_DIR}/QorinCoreConfig.cmake INSTALL_DESTINATION ${config_dir})
# Before 1.0 every minor release may break callers: 0.1.x serves a request
# for 0.1 and nothing else.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
else()
  set(compatibility SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QorinCoreConfigVersion.cmake
  COMPATIBILITY ${compatibility})
install(FILES ${PROJECT_BINARY_DIR}/QorinCoreConfig.cmake
              ${PROJECT_BINARY_DIR}/QorinCoreConfigVersion.cmake
        DESTINATION ${config_dir})

set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
qorin_relative_path(QORIN_PC_PREFIX ${pc_dir} .)
configure_file(cmake/QorinCore.pc.in ${PROJECT_BINARY_DIR}/QorinCore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/QorinCore.pc DESTINATION ${pc_dir})
