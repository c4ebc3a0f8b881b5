# Runs PROGRAM with ARGUMENTS and fails unless it ends with STATUS.
list(REMOVE_ITEM PROGRAM "")
execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status STREQUAL STATUS)
  message(FATAL_ERROR "ended with ${status}, not ${STATUS}\n${out}${err}")
endif()
