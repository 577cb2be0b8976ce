# Checks the qorin(1) page that the build wrote: its NAME line, a section for
# the exit statuses, an entry for every command, the encode-name caveat, and
# that writing it again gives the same bytes, with the date of the release.
#   cmake -DPAGE=<qorin.1> -DWRITE_PAGE=<command that writes it, without
#         -DOUTPUT and -P> -DSCRIPT=<man_page.cmake> -DSCRATCH=<folder> -P man_page_check.cmake
file(READ ${PAGE} page)
set(failures)
function(expect_text text why)
  string(FIND "${page}" "${text}" at)
  if(at EQUAL -1)
    list(APPEND failures "${why}: no \"${text}\"")
    set(failures "${failures}" PARENT_SCOPE)
  endif()
endfunction()

expect_text("\n.SH NAME\nqorin \\- check and convert parameter values, units and annotations\n.SH SYNOPSIS\n"
  "NAME line")
expect_text("\n.SH \"EXIT STATUS\"\n0 success; 1 an input was invalid" "exit status section")
foreach(command annotate convert decode-name demo encode-name env log number run units)
  expect_text("\n.SS \"qorin ${command}\"\n.B qorin ${command}\n" "entry of ${command}")
endforeach()
expect_text("Names of printable ASCII come back unchanged through decode\\-name" "encode-name caveat")
expect_text("\n.SH ENVIRONMENT\n" "static sections")
# The tool's exit statuses once, not again under every command that has no
# statuses of its own.
string(FIND "${page}" "0 success; 1 an input was invalid" first)
string(FIND "${page}" "0 success; 1 an input was invalid" last REVERSE)
if(NOT first EQUAL last)
  list(APPEND failures "the tool's exit statuses appear more than once")
endif()

# The same inputs give the same bytes; the date comes from the release date,
# counted right on both sides of a leap day.
foreach(case "2026-11-25;November 2026" "2024-02-29;February 2024" "2024-03-01;March 2024")
  list(GET case 0 date)
  list(GET case 1 month)
  set(copy ${SCRATCH}/qorin-${date}.1)
  execute_process(COMMAND ${WRITE_PAGE} -DRELEASE_DATE=${date} -DOUTPUT=${copy} -P ${SCRIPT}
    RESULT_VARIABLE status ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "writing the page again failed: ${errors}")
  endif()
  file(READ ${copy} again)
  string(REGEX REPLACE "\n\\.TH QORIN \"1\" \"[A-Za-z]+ [0-9]+\" " "\n.TH QORIN \"1\" \"${month}\" " expected "${page}")
  if(NOT again STREQUAL expected)
    list(APPEND failures "the page written for ${date} differs from the built one beyond the date \"${month}\"")
  endif()
endforeach()

if(failures)
  list(JOIN failures "\n" failures)
  message(FATAL_ERROR "${failures}")
endif()
