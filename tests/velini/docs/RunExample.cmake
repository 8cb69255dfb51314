# Runs PROGRAM in the folder WORK, made anew with a copy of SETTINGS in it. It must succeed and
# print the content of the file EXPECTED.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(COPY "${SETTINGS}" DESTINATION "${WORK}")
execute_process(COMMAND "${PROGRAM}" WORKING_DIRECTORY "${WORK}" OUTPUT_VARIABLE printed
                COMMAND_ERROR_IS_FATAL ANY)
file(READ "${EXPECTED}" expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "It printed\n${printed}\ninstead of\n${expected}")
endif()
file(REMOVE_RECURSE "${WORK}")
