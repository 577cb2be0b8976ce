include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS QorinCore EXPORT QorinCoreTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/qorin DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${CMAKE_BINARY_DIR}/include/qorin/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qorin)
if(TARGET qorin)
  install(TARGETS qorin RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(QORIN_FMT_HEADER_ONLY OFF)
if(CMAKE_CROSSCOMPILING)
  # Callers on Windows get {fmt} header-only from the package itself, and
  # the MinGW runtime beside the DLL.
  set(QORIN_FMT_HEADER_ONLY ON)
  install(DIRECTORY ${QORIN_STAGED_HEADERS}/fmt DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(FILES ${QORIN_MINGW_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QorinCore)
install(EXPORT QorinCoreTargets NAMESPACE QorinCore:: DESTINATION ${config_dir})
configure_package_config_file(cmake/QorinCoreConfig.cmake.in
  ${CMAKE_BINARY_DIR}/QorinCoreConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/QorinCoreConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/QorinCoreConfig.cmake
              ${CMAKE_BINARY_DIR}/QorinCoreConfigVersion.cmake
        DESTINATION ${config_dir})

configure_file(cmake/QorinCore.pc.in ${CMAKE_BINARY_DIR}/QorinCore.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/QorinCore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
