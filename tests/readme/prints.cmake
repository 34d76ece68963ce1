# A program prints what is kept of it.
# usage: cmake -DPROGRAM=... [-DARGUMENTS="FIRST;SECOND"] -DEXPECTED=... -P prints.cmake
execute_process(COMMAND "${PROGRAM}" ${ARGUMENTS} OUTPUT_VARIABLE printed RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ends with ${status}")
endif()
file(READ "${EXPECTED}" expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} prints\n${printed}\nwhere ${EXPECTED} has\n${expected}")
endif()
