# Every dependency is a Debian package. On Linux they are found the normal
# CMake way. The MinGW cross build cannot use /usr/include (it holds glibc's
# headers), so the header-only packages are staged into a folder that holds
# only them, and {fmt} is used header-only there.
find_package(Threads REQUIRED)

if(NOT CMAKE_CROSSCOMPILING)
  find_package(fmt CONFIG REQUIRED)
  find_package(utf8cpp CONFIG REQUIRED)
  find_package(FastFloat CONFIG REQUIRED)
  set(QORIN_FMT_TARGET fmt::fmt)
  set(QORIN_UTF8CPP_TARGET utf8cpp)
  set(QORIN_FAST_FLOAT_TARGET FastFloat::fast_float)
  return()
endif()

set(QORIN_STAGED_HEADERS ${CMAKE_BINARY_DIR}/staged-headers)
foreach(dir fmt utf8cpp fast_float CLI nlohmann)
  if(NOT EXISTS /usr/include/${dir})
    message(FATAL_ERROR "/usr/include/${dir} is missing: run ./scripts/bootstrap")
  endif()
  file(COPY /usr/include/${dir} DESTINATION ${QORIN_STAGED_HEADERS})
endforeach()

function(qorin_staged_header_target target include_dir)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${include_dir}")
endfunction()

qorin_staged_header_target(fmt::fmt-header-only ${QORIN_STAGED_HEADERS})
set_property(TARGET fmt::fmt-header-only PROPERTY INTERFACE_COMPILE_DEFINITIONS FMT_HEADER_ONLY=1)
qorin_staged_header_target(utf8cpp ${QORIN_STAGED_HEADERS}/utf8cpp)
qorin_staged_header_target(FastFloat::fast_float ${QORIN_STAGED_HEADERS})
qorin_staged_header_target(CLI11::CLI11 ${QORIN_STAGED_HEADERS})
qorin_staged_header_target(nlohmann_json::nlohmann_json ${QORIN_STAGED_HEADERS})
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
