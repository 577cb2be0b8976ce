# Which find_package requests the installed version file accepts (cmake -P,
# with VERSION_FILE set). Before 1.0 only the same minor version matches; from
# 1.0 on, the same major version.
function(compatible request out)
  set(PACKAGE_FIND_VERSION ${request})
  string(REPLACE "." ";" parts ${request})
  list(GET parts 0 PACKAGE_FIND_VERSION_MAJOR)
  list(GET parts 1 PACKAGE_FIND_VERSION_MINOR)
  include(${VERSION_FILE})
  set(${out} ${PACKAGE_VERSION_COMPATIBLE} PARENT_SCOPE)
  set(installed ${PACKAGE_VERSION} PARENT_SCOPE)
endfunction()

compatible(0.0 ignored)
string(REPLACE "." ";" parts ${installed})
list(GET parts 0 major)
list(GET parts 1 minor)
math(EXPR next_minor "${minor} + 1")
math(EXPR next_major "${major} + 1")
set(older_minor_matches FALSE)
if(major GREATER 0)
  set(older_minor_matches TRUE)
endif()

# request => accepted
set(cases
  "${major}.${minor}" TRUE
  "${major}.${minor}.0" TRUE
  "${major}.${next_minor}" FALSE
  "${next_major}.0" FALSE)
if(minor GREATER 0)
  math(EXPR previous_minor "${minor} - 1")
  list(APPEND cases "${major}.${previous_minor}" ${older_minor_matches})
endif()

set(failed FALSE)
while(cases)
  list(POP_FRONT cases request expected)
  compatible(${request} got)
  if(NOT "${got}" STREQUAL "${expected}")
    message(SEND_ERROR "version ${installed}: request ${request} gives ${got}, want ${expected}")
  endif()
endwhile()
