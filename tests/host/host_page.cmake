# The example of the page about the host is real: its first block is a script, its second one what
# comes of it.
#   cmake -DXLHOST=<program> -DLIBRARY=<add-in> -DPAGE=<file> -DFOLDER=<to write to> -P host_page.cmake
cmake_minimum_required(VERSION 3.25)

file(READ ${PAGE} page)
if(NOT page MATCHES "```xlhost\n([^`]*)```\n```answers\n([^`]*)```\n")
  message(FATAL_ERROR "${PAGE} has no script with its answers.")
endif()
set(script "${CMAKE_MATCH_1}")
set(answers "${CMAKE_MATCH_2}")
file(WRITE ${FOLDER}/page.jsonl "${script}")
execute_process(COMMAND ${XLHOST} ${LIBRARY} INPUT_FILE ${FOLDER}/page.jsonl
                OUTPUT_VARIABLE actual RESULT_VARIABLE status)
if(NOT status STREQUAL 0 OR NOT actual STREQUAL answers)
  message(FATAL_ERROR "What the script of ${PAGE} gives, with status ${status}:\n${actual}")
endif()
