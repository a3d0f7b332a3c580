# Runs COMMAND (a ;-list) and checks its exit status against EXPECT_STATUS and
# its standard output alone against STDOUT_MATCHES, a regular expression.
# Standard error decides only when STDERR_MATCHES is given, and then need
# only contain a match: an emulator may write chatter of its own there.
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
set(report "\nstdout: '${out}'\nstderr: '${err}'")
if(NOT status STREQUAL EXPECT_STATUS)
  message(FATAL_ERROR "exit status ${status}, expected ${EXPECT_STATUS}${report}")
endif()
if(NOT out MATCHES "${STDOUT_MATCHES}")
  message(FATAL_ERROR "standard output does not match '${STDOUT_MATCHES}'${report}")
endif()
if(DEFINED STDERR_MATCHES AND NOT err MATCHES "${STDERR_MATCHES}")
  message(FATAL_ERROR "standard error does not match '${STDERR_MATCHES}'${report}")
endif()
