# Fails if a source file isn't as clang-format would write it, and names the file.
#   cmake -DROOT=<source folder> -DCLANG_FORMAT=<program> -P cmake/format.cmake
cmake_minimum_required(VERSION 3.25)

set(patterns)
foreach(folder core cli addin host tests bench fuzz)
  list(APPEND patterns ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.c ${ROOT}/${folder}/*.cpp)
endforeach()
file(GLOB_RECURSE files RELATIVE ${ROOT} ${patterns})
execute_process(COMMAND ${CLANG_FORMAT} --dry-run -Werror ${files}
                WORKING_DIRECTORY ${ROOT} RESULT_VARIABLE status ERROR_VARIABLE complaints)
if(NOT status EQUAL 0)
  string(REGEX MATCHALL "[^\n:]+:[0-9]+:[0-9]+: error" places "${complaints}")
  list(TRANSFORM places REPLACE ":.*" "")
  list(REMOVE_DUPLICATES places)
  list(JOIN places " " places)
  message(FATAL_ERROR "Not formatted; mend it with\n  clang-format -i ${places}\n")
endif()
