# Keeps one Wine server up for the whole Windows test run.
# A server started on demand exits a few seconds after its last client; a test
# that starts at that instant dies with "recvmsg: Connection reset by peer".
# ACTION=start starts a persistent server (after letting a dying one finish)
# and boots Wine's system processes under it; ACTION=stop stops the server
# again, but only if start was the one that started it.
#
# Nothing started here may hold ctest's output pipes: a process that outlives
# this script keeps ctest waiting for the end of the output. The server and
# the system processes (which a test would otherwise start, with its pipes)
# are therefore started with their input and output on /dev/null.
set(marker ${CMAKE_CURRENT_BINARY_DIR}/wine_server.started)
set(detached INPUT_FILE /dev/null OUTPUT_FILE /dev/null ERROR_FILE /dev/null)
if(ACTION STREQUAL "start")
  execute_process(COMMAND ${WINESERVER} -p RESULT_VARIABLE status ${detached})
  if(NOT status EQUAL 0)
    # One is running already: either winding down, or kept by another program.
    execute_process(COMMAND ${WINESERVER} -w TIMEOUT 20)
    execute_process(COMMAND ${WINESERVER} -p RESULT_VARIABLE status ${detached})
  endif()
  if(status EQUAL 0)
    file(TOUCH ${marker})
  endif()
  execute_process(COMMAND ${WINE} wineboot ${detached})
elseif(ACTION STREQUAL "stop" AND EXISTS ${marker})
  file(REMOVE ${marker})
  execute_process(COMMAND ${WINESERVER} -k)
endif()
