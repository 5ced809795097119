# What every target of this project is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(QUANTIVERSE_BENCHMARKS "Build the benchmarks" OFF)
option(QUANTIVERSE_WERROR "Treat warnings as errors" OFF)
set(QUANTIVERSE_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")
option(QUANTIVERSE_FUZZ "Build the fuzz targets with libFuzzer (clang)" OFF)
option(QUANTIVERSE_COVERAGE "Instrument for coverage" OFF)

add_library(qv_options INTERFACE)
# The order of arithmetic is part of every result: no contraction, no x87.
set(cxx_options
  -Wall -Wextra -Wconversion -Wshadow
  # GCC 12 is wrong about overlaps inside its own std::string.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  -ffp-contract=off
  # Nobody replaces a function of these libraries, nor calls into others so early that binding late
  # would pay.
  $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>
  -fno-plt
  # A call runs through a hundred short functions once. Each from the start of a line of the cache
  # takes up fewer of them, and costs the same wherever the linker puts it.
  -falign-functions=64
  # Values are copied right after they were written in smaller pieces, which makes wide loads wait.
  $<$<CXX_COMPILER_ID:GNU>:-fno-tree-slp-vectorize>
  $<$<BOOL:${QUANTIVERSE_WERROR}>:-Werror>)
# The compiler of Windows' resources knows none of these.
target_compile_options(qv_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${cxx_options}>")
if(QUANTIVERSE_SANITIZE)
  target_compile_options(qv_options INTERFACE
    -fsanitize=${QUANTIVERSE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qv_options INTERFACE -fsanitize=${QUANTIVERSE_SANITIZE})
endif()
if(QUANTIVERSE_FUZZ)
  target_compile_options(qv_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(QUANTIVERSE_COVERAGE)
  target_compile_options(qv_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(qv_options INTERFACE --coverage)
endif()
