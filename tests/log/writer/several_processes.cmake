# Four processes append 20,000 lines each to one log file at the same time
# (the commands of one execute_process run side by side, as a pipeline);
# every line must arrive once, whole, in its writer's order.
set(log several_processes.log)
file(REMOVE ${log})
execute_process(
  COMMAND ${WRITER} write ${log} 0 20000
  COMMAND ${WRITER} write ${log} 1 20000
  COMMAND ${WRITER} write ${log} 2 20000
  COMMAND ${WRITER} write ${log} 3 20000
  RESULTS_VARIABLE statuses)
execute_process(COMMAND ${WRITER} check ${log} 4 20000 RESULT_VARIABLE status ERROR_VARIABLE faults)
file(REMOVE ${log})
if(NOT statuses STREQUAL "0;0;0;0" OR NOT status EQUAL 0)
  message(FATAL_ERROR "writers: ${statuses}, check: ${status}\n${faults}")
endif()
