# Writes the qorin(1) manual page from the tool's own help, so that the page
# cannot drift from the program: help2man reads `qorin --help`, and each
# command's `qorin COMMAND --help` becomes its entry under COMMANDS.
#
#   cmake -DQORIN=<tool> -DHELP2MAN=<help2man> -DINCLUDE=<static sections>
#         -DSOURCE="QorinCore 0.1.0" -DRELEASE_DATE=2026-11-25 -DOUTPUT=qorin.1
#         -P man_page.cmake
#
# The page carries RELEASE_DATE instead of today's date: two builds of one
# release give the same bytes.

foreach(variable QORIN HELP2MAN INCLUDE SOURCE RELEASE_DATE OUTPUT)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "man_page.cmake: ${variable} is not set")
  endif()
endforeach()

# help2man takes its date from SOURCE_DATE_EPOCH, in seconds.
if(NOT RELEASE_DATE MATCHES "^([0-9][0-9][0-9][0-9])-0*([1-9][0-9]?)-0*([1-9][0-9]?)$")
  message(FATAL_ERROR "man_page.cmake: RELEASE_DATE \"${RELEASE_DATE}\" is not YYYY-MM-DD")
endif()
set(year ${CMAKE_MATCH_1})
set(month ${CMAKE_MATCH_2})
set(day ${CMAKE_MATCH_3})
# Days since 1970-01-01 in the proleptic Gregorian calendar, counting years
# from March so that the leap day comes last.
math(EXPR year "${year} - (14 - ${month}) / 12")
math(EXPR day_of_year "(153 * ((${month} + 9) % 12) + 2) / 5 + ${day} - 1")
math(EXPR days "365 * ${year} + ${year} / 4 - ${year} / 100 + ${year} / 400 + ${day_of_year} - 719468")
math(EXPR epoch "${days} * 86400")
set(ENV{SOURCE_DATE_EPOCH} ${epoch})
# A sanitizer build of the tool runs here too; its leak report is not help.
set(ENV{ASAN_OPTIONS} detect_leaks=0)

function(run_checked output_variable)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "man_page.cmake: ${ARGN} failed (${status}):\n${errors}")
  endif()
  set(${output_variable} "${output}" PARENT_SCOPE)
endfunction()

# The NAME line is the summary that opens `qorin --help`; the commands are
# the ones it lists.
run_checked(help ${QORIN} --help)
if(NOT help MATCHES "^qorin: ([^\n]+)\n")
  message(FATAL_ERROR "man_page.cmake: `qorin --help` does not open with \"qorin: <summary>\"")
endif()
set(summary "${CMAKE_MATCH_1}")
string(REGEX MATCH "\nSubcommands:\n(  [^\n]+\n)+" command_lines "${help}")
string(REGEX MATCHALL "\n  ([a-z][a-z-]*) " commands "${command_lines}")
list(TRANSFORM commands REPLACE "^\n  ([a-z-]+) $" "\\1")
if(NOT commands)
  message(FATAL_ERROR "man_page.cmake: `qorin --help` lists no commands")
endif()

set(help2man ${HELP2MAN} --no-info --name=${summary} --source=${SOURCE})

# The top-level footer (exit statuses) is every command's default footer
# too: the page shows it once.
run_checked(top_page ${help2man} ${QORIN})
string(FIND "${top_page}" "\n.PP\nExit status:" footer_start REVERSE)
if(footer_start EQUAL -1)
  message(FATAL_ERROR "man_page.cmake: `qorin --help` has no \"Exit status:\" paragraph")
endif()
string(SUBSTRING "${top_page}" ${footer_start} -1 top_footer)

# Each command's page, from its usage line on, as one subsection: its own
# sections become bold paragraph headings.
set(command_section "[COMMANDS]\n")
foreach(command ${commands})
  run_checked(page ${help2man} "--help-option=${command} --help" ${QORIN})
  set(usage_start_text "\n.SH SYNOPSIS\n.B qorin\n\\fI\\,${command} \\/\\fR")
  string(FIND "${page}" "${usage_start_text}" usage_start)
  if(usage_start EQUAL -1)
    message(FATAL_ERROR "man_page.cmake: `qorin ${command} --help` has no usage line")
  endif()
  string(LENGTH "${usage_start_text}" length)
  math(EXPR usage_start "${usage_start} + ${length}")
  string(SUBSTRING "${page}" ${usage_start} -1 page)
  string(REPLACE "${top_footer}" "\n" page "${page}")
  string(REPLACE "\n.SH DESCRIPTION\n" "\n.PP\n" page "${page}")
  string(REPLACE "\n.SH OPTIONS\n" "\n.PP\n\\fBOptions:\\fR\n" page "${page}")
  string(REGEX REPLACE "\n\\.S[HS] \"?([^\n\"]*)\"?\n" "\n.PP\n\\\\fB\\1\\\\fR\n" page "${page}")
  string(STRIP "${page}" page)
  # "\&" keeps a usage line such as "[OPTIONS]" from reading as a section
  # name of the include file.
  string(APPEND command_section ".SS \"qorin ${command}\"\n.B qorin ${command}\n\\&${page}\n")
endforeach()

file(READ ${INCLUDE} static_sections)
set(include_file ${OUTPUT}.h2m)
file(WRITE ${include_file} "${static_sections}\n${command_section}")
run_checked(page ${help2man} --include=${include_file} ${QORIN})
# The exit statuses of the tool as a whole are a section of their own.
set(footer_heading "\n.PP\nExit status: ")
string(FIND "${page}" "${footer_heading}" footer_start)
string(SUBSTRING "${page}" 0 ${footer_start} head)
string(LENGTH "${footer_heading}" length)
math(EXPR footer_start "${footer_start} + ${length}")
string(SUBSTRING "${page}" ${footer_start} -1 tail)
file(WRITE ${OUTPUT} "${head}\n.SH \"EXIT STATUS\"\n${tail}")
