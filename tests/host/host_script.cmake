# Runs a script through the host and compares all that comes of it with the expected text.
#   cmake -DXLHOST=<program> -DLIBRARY=<add-in> "-DOPTIONS=<the host's options>"
#         -DSCRIPT=<file> -DEXPECTED=<file> -DACTUAL=<file to write> -P host_script.cmake
# Lines of the script that begin with "#" are for readers. The expected text is the standard output;
# then, each line behind "! ", the standard error; then, unless it is 0, "exit" and the status.
# With QUANTIVERSE_APPROVE in the environment the expected text is replaced by the actual one. Read
# the difference before you keep it.
cmake_minimum_required(VERSION 3.25)

separate_arguments(options UNIX_COMMAND "${OPTIONS}")
execute_process(COMMAND sed "/^#/d" ${SCRIPT}
                COMMAND ${XLHOST} ${options} ${LIBRARY}
                OUTPUT_VARIABLE actual ERROR_VARIABLE errors RESULT_VARIABLE status)
string(REGEX REPLACE "([^\n]+\n?)" "! \\1" errors "${errors}")
string(APPEND actual "${errors}")
if(NOT status STREQUAL 0)
  string(APPEND actual "exit ${status}\n")
endif()

set(expected)
if(EXISTS ${EXPECTED})
  file(READ ${EXPECTED} expected)
endif()
if("${actual}" STREQUAL "${expected}")
  return()
endif()
if(DEFINED ENV{QUANTIVERSE_APPROVE})
  file(WRITE ${EXPECTED} "${actual}")
  message("Replaced ${EXPECTED}")
  return()
endif()
file(WRITE ${ACTUAL} "${actual}")
execute_process(COMMAND diff -u ${EXPECTED} ${ACTUAL})
message(FATAL_ERROR "What came of ${SCRIPT} is not what was expected.")
