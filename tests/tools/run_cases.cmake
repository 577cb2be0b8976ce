# qorin run and qorin log. The child program is qorin itself: on Windows it
# is found beside the running qorin.exe, on Linux by its full path.
if(CMAKE_CROSSCOMPILING)
  set(qorin_child qorin)
else()
  set(qorin_child $<TARGET_FILE:qorin>)
endif()

qorin_tool_test(version
  ARGS --version
  STDOUT "^qorin [0-9]+\\.[0-9]+\\.[0-9]+ \\(QorinCore [0-9]+\\.[0-9]+\\.[0-9]+, (Linux|Windows) x86_64\\)\n$")
qorin_tool_test(run_cannot_start
  ARGS run -- qorin-no-such-program
  STATUS 127
  STDERR "^qorin: cannot start \"qorin-no-such-program\": [^\n]+\n$")
# The child's standard error stays standard error.
qorin_tool_test(run_keeps_the_streams_apart
  ARGS run -- ${qorin_child} log hello
  STDOUT "^$"
  STDERR "^hello\n$")
qorin_tool_test(run_passes_the_exit_status
  ARGS run --double-pipe -- ${qorin_child} no-such-command
  STATUS 2
  STDERR "A subcommand is required")
qorin_tool_test(log_without_a_file
  ARGS log --prefix p "to stderr"
  STDERR "^to stderr\n$")
qorin_tool_test(run_log_file_cannot_open
  ARGS run --log no-such-dir/x/run.log -- ${qorin_child} log x
  STATUS 2
  STDERR "^qorin: cannot open log file \"no-such-dir/x/run.log\": No such file or directory\n$")
qorin_tool_test(log_file_cannot_open
  ARGS log --log no-such-dir/x/run.log x
  STATUS 2
  STDERR "^qorin: cannot open log file \"no-such-dir/x/run.log\": No such file or directory\n$")
# Everything from the program on is the program's: its options too.
qorin_tool_test(run_options_stop_at_the_program
  ARGS run ${qorin_child} --help
  STDOUT "^qorin: check and convert")

if(CMAKE_CROSSCOMPILING)
  # "/c" is the program's, not an option of qorin's.
  qorin_tool_test(run_windows_slash_option
    ARGS run cmd /c echo hi
    STDOUT "^hi\n$")
  # An exception code is the program's status, not a failure to start. Wine
  # hands Linux the low byte of it: 0xC0000005 arrives as 5.
  qorin_tool_test(run_exception_code_status
    ARGS run cmd /c exit -1073741819
    STATUS 5
    STDERR "^$")
else()
  # Signals, timing and closed streams, each with a real process.
  foreach(case screen_separation prompt_and_carriage_returns sigint_forwarded ctrl_c_in_terminal
          sigterm_leaves_no_orphan background_grandchild full_log_device options_stop_at_the_program
          closed_standard_streams pipe_closed_by_the_reader)
    add_test(NAME tool.run_process.${case}
      COMMAND /usr/bin/python3 ${CMAKE_CURRENT_SOURCE_DIR}/run_process_cases.py $<TARGET_FILE:qorin> ${case}
        ${CMAKE_CURRENT_BINARY_DIR})
    set_tests_properties(tool.run_process.${case} PROPERTIES TIMEOUT 60)
  endforeach()
endif()

# What reaches the log file, end to end.
add_test(NAME tool.run_log_file
  COMMAND ${CMAKE_COMMAND}
    "-DQORIN=${CMAKE_CROSSCOMPILING_EMULATOR};$<TARGET_FILE:qorin>"
    "-DCHILD=${qorin_child}"
    -P ${CMAKE_CURRENT_SOURCE_DIR}/run_log_file_case.cmake
  WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
if(QORIN_TEST_FIXTURES)
  set_tests_properties(tool.run_log_file PROPERTIES FIXTURES_REQUIRED "${QORIN_TEST_FIXTURES}")
endif()
