# qorin run logs a child's lines (standard error as e:) and qorin log adds
# its own to the same file, every line of a two-line text decorated.
set(log run_log_file_case.log)
file(REMOVE ${log})
execute_process(COMMAND ${QORIN} run --log ${log} --prefix p -- ${CHILD} log hello RESULT_VARIABLE status)
execute_process(COMMAND ${QORIN} log --log ${log} --prefix p "bye\nsee you" RESULT_VARIABLE status2)
file(READ ${log} text)
file(REMOVE ${log})
if(NOT status EQUAL 0 OR NOT status2 EQUAL 0 OR NOT text STREQUAL "e:p: hello\nl:p: bye\nl:p: see you\n")
  message(FATAL_ERROR "status ${status}/${status2}, log:\n${text}")
endif()
