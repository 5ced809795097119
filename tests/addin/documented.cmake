# Types the formulas of a page's tables into a cell and compares what the cell shows.
#   cmake -DXLHOST=<program> -DLIBRARY=<add-in> -DPAGE=<file.md> -P documented.cmake
cmake_minimum_required(VERSION 3.25)

file(STRINGS ${PAGE} rows REGEX "^[|] `=Quantiverse[(][0-9]")
set(count 0)
foreach(row IN LISTS rows)
  string(REGEX MATCH "^[|] `(.*[)])` [|] `?([^`]*)`? [|]$" row "${row}")
  set(shown "${CMAKE_MATCH_2}")
  string(REPLACE "\"" "\\\"" formula "${CMAKE_MATCH_1}")
  execute_process(COMMAND printf "%s\n" "[\"open\"]" "[\"cell\", \"A1\", \"${formula}\"]"
                          "[\"cell\", \"A1\"]"
                  COMMAND ${XLHOST} ${LIBRARY} OUTPUT_VARIABLE answers)
  string(REGEX REPLACE ".*\"value\": \"?([^\\\\\"}]*).*" "\\1" actual "${answers}")
  if(NOT actual STREQUAL shown)
    message(SEND_ERROR "${formula} shows ${actual} and not ${shown}")
  endif()
  math(EXPR count "${count} + 1")
endforeach()
if(count LESS 7)
  message(SEND_ERROR "There are ${count} formulas only.")
endif()
