# What `cmake --install` puts where, in four components that the packages
# (QorinPackaging.cmake) split along: runtime (the shared library), development
# (headers, import library, CMake package, QorinCore.pc), tools (qorin, its
# man page and completion) and python (the module).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS QorinCore EXPORT QorinCoreTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/qorin DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/include/qorin/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qorin COMPONENT development)
if(WIN32)
  # The MinGW runtime as Debian ships it carries its debugging information
  # (libstdc++ alone is 23 MB): callers get it stripped.
  set(stripped_runtime ${PROJECT_BINARY_DIR}/stripped-runtime)
  foreach(dll IN LISTS QORIN_MINGW_RUNTIME_DLLS)
    get_filename_component(name ${dll} NAME)
    if(${dll} IS_NEWER_THAN ${stripped_runtime}/${name})
      file(MAKE_DIRECTORY ${stripped_runtime})
      execute_process(COMMAND ${CMAKE_STRIP} --strip-debug -o ${stripped_runtime}/${name} ${dll}
                      COMMAND_ERROR_IS_FATAL ANY)
    endif()
    install(FILES ${stripped_runtime}/${name} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  endforeach()
endif()

# The installed package may be moved or installed with --prefix elsewhere:
# the tool and the module find the library relative to themselves (on
# Windows the DLL sits beside the tool anyway). An installation into the
# system's own library folder needs no search path, and Debian forbids one.
list(FIND CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES "${CMAKE_INSTALL_FULL_LIBDIR}" system_libdir)
function(qorin_relative_path out from to)
  file(RELATIVE_PATH path ${CMAKE_INSTALL_PREFIX}/${from} ${CMAKE_INSTALL_PREFIX}/${to})
  string(REGEX REPLACE "/$" "" path "${path}")
  if(path STREQUAL "")
    set(path .)
  endif()
  set(${out} ${path} PARENT_SCOPE)
endfunction()
function(qorin_find_library_relatively target from)
  if(system_libdir EQUAL -1)
    qorin_relative_path(to_lib ${from} ${CMAKE_INSTALL_LIBDIR})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_lib}")
  endif()
endfunction()

if(TARGET qorin)
  qorin_find_library_relatively(qorin ${CMAKE_INSTALL_BINDIR})
  install(TARGETS qorin RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
endif()

# The Python module goes into the prefix's own package folder, with its type
# stub beside it.
if(TARGET qorin_python)
  set(QORIN_PYTHON_INSTALL_DIR "lib/python${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}/site-packages"
      CACHE STRING "Where the qorin Python module is installed, relative to the prefix")
  qorin_find_library_relatively(qorin_python ${QORIN_PYTHON_INSTALL_DIR})
  install(TARGETS qorin_python LIBRARY DESTINATION ${QORIN_PYTHON_INSTALL_DIR} COMPONENT python)
  install(FILES python/qorin.pyi DESTINATION ${QORIN_PYTHON_INSTALL_DIR} COMPONENT python)
endif()

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QorinCore)
install(EXPORT QorinCoreTargets NAMESPACE QorinCore:: DESTINATION ${config_dir}
        COMPONENT development)
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
        DESTINATION ${config_dir} COMPONENT development)

set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
qorin_relative_path(QORIN_PC_PREFIX ${pc_dir} .)
configure_file(cmake/QorinCore.pc.in ${PROJECT_BINARY_DIR}/QorinCore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/QorinCore.pc DESTINATION ${pc_dir} COMPONENT development)
