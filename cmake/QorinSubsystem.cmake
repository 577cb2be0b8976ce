# A subsystem folder's portable sources are all its .cpp files; its platform
# files are named win32_*.cpp and posix_*.cpp and only the host's are built.
function(qorin_add_subsystem_sources target dir)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.cpp)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "/posix_[^/]*\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "/win32_[^/]*\\.cpp$")
  endif()
  target_sources(${target} PRIVATE ${sources})
endfunction()

function(qorin_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wnon-virtual-dtor)
endfunction()
