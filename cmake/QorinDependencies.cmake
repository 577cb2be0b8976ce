# Every dependency is a Debian package. On Linux they are found the normal
# CMake way. The MinGW cross build cannot use /usr/include (it holds glibc's
# headers), so the header-only packages are staged into a folder that holds
# only them, and {fmt} is used header-only there.
find_package(Threads REQUIRED)

if(NOT CMAKE_CROSSCOMPILING)
  find_package(fmt CONFIG REQUIRED)
  find_package(utf8cpp CONFIG REQUIRED)
  find_package(FastFloat CONFIG REQUIRED)
  # {fmt} is linked by its file: through fmt::fmt, the exported QorinCore
  # target would name fmt as a library it depends on, though callers need none.
  add_library(qorin::fmt INTERFACE IMPORTED)
  set_target_properties(qorin::fmt PROPERTIES
    INTERFACE_LINK_LIBRARIES "$<TARGET_FILE:fmt::fmt>"
    INTERFACE_INCLUDE_DIRECTORIES "$<TARGET_PROPERTY:fmt::fmt,INTERFACE_INCLUDE_DIRECTORIES>"
    INTERFACE_COMPILE_DEFINITIONS "$<TARGET_PROPERTY:fmt::fmt,INTERFACE_COMPILE_DEFINITIONS>")
  set(QORIN_FMT_TARGET qorin::fmt)
  set(QORIN_UTF8CPP_TARGET utf8cpp)
  set(QORIN_FAST_FLOAT_TARGET FastFloat::fast_float)
  return()
endif()

set(QORIN_STAGED_HEADERS ${PROJECT_BINARY_DIR}/staged-headers)
# qorin_staged_headers(TARGET FOLDER [INCLUDE_DIR]): copies /usr/include/FOLDER
# into the staging folder and makes TARGET a header-only target whose include
# directory is the staging folder, or INCLUDE_DIR inside it.
function(qorin_staged_headers target folder)
  if(NOT EXISTS /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is missing: run ./scripts/bootstrap")
  endif()
  file(COPY /usr/include/${folder} DESTINATION ${QORIN_STAGED_HEADERS})
  set(include_dir ${QORIN_STAGED_HEADERS})
  if(ARGN)
    string(APPEND include_dir /${ARGN})
  endif()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${include_dir}")
endfunction()

qorin_staged_headers(fmt::fmt-header-only fmt)
set_property(TARGET fmt::fmt-header-only PROPERTY INTERFACE_COMPILE_DEFINITIONS FMT_HEADER_ONLY=1)
qorin_staged_headers(utf8cpp utf8cpp utf8cpp)
qorin_staged_headers(FastFloat::fast_float fast_float)
set(QORIN_FMT_TARGET fmt::fmt-header-only)
set(QORIN_UTF8CPP_TARGET utf8cpp)
set(QORIN_FAST_FLOAT_TARGET FastFloat::fast_float)

# Executables run from the build folder under Wine without hunting for the
# MinGW runtime: its DLLs sit beside them.
set(QORIN_MINGW_RUNTIME_DLLS)
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                  OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS "${path}")
    message(FATAL_ERROR "MinGW runtime ${dll} not found")
  endif()
  list(APPEND QORIN_MINGW_RUNTIME_DLLS ${path})
  file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endforeach()
