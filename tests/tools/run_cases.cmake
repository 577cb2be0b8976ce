# qorin run and qorin log. The child program is qorin itself: on Windows it
# is found beside the running qorin.exe, on Linux by its full path.
if(CMAKE_CROSSCOMPILING)
  set(qorin_child qorin)
else()
  set(qorin_child $<TARGET_FILE:qorin>)
endif()

qorin_tool_test(run_cannot_start
  ARGS run -- qorin-no-such-program
  STATUS 127
  STDERR "^qorin: cannot start \"qorin-no-such-program\": ")
# The child's standard error is logged as output and mirrored there.
qorin_tool_test(run_mirrors_the_child
  ARGS run -- ${qorin_child} log hello
  EXPECT run_hello.txt)
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
  STDERR "^qorin: Can't open log file: \"no-such-dir/x/run.log\"")

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
