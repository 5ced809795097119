# Holds an image to what it may need and has to offer: libraries that every Windows has, Excel's
# two entries by their numbers, and exactly the given exports, undecorated.
#   cmake -DOBJDUMP=<program> -DIMAGE=<file> "-DEXPORTS=<name>;..." -P image.cmake
cmake_minimum_required(VERSION 3.25)
set(SYSTEM_LIBRARIES advapi32 comctl32 gdi32 kernel32 msvcrt ole32 oleacc oleaut32 user32 xlcall32)

function(compare what actual expected)
  list(SORT actual)
  list(SORT expected)
  if(NOT actual STREQUAL expected)
    message(SEND_ERROR "${what}:\n  ${actual}\nand not\n  ${expected}")
  endif()
endfunction()

execute_process(COMMAND ${OBJDUMP} -p ${IMAGE} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "DLL Name: [^\n]+" libraries "${headers}")
list(TRANSFORM libraries REPLACE "DLL Name: (.*)\\.(dll|DLL)$" "\\1")
list(TRANSFORM libraries TOLOWER)
if(NOT "xlcall32" IN_LIST libraries)
  message(SEND_ERROR "Nothing of Excel is imported.")
endif()
list(REMOVE_ITEM libraries ${SYSTEM_LIBRARIES})
compare("Libraries that not every Windows has" "${libraries}" "")

string(REGEX MATCH "DLL Name: XLCALL32\\.dll\n[^\n]*\n([^\n]+\n)*" entries "${headers}")
string(REGEX MATCHALL "\t *[0-9]+  [^\n]+" entries "${entries}")
list(TRANSFORM entries REPLACE "^\t *0*" "")
compare("What is imported from Excel" "${entries}" "2  <none>;3  <none>")

string(REGEX REPLACE ".*Name Pointer\\] Table[^\n]*\n" "" names "${headers}")
string(REGEX MATCH "^(\t\\[ *[0-9]+\\][^\n]*\n)*" names "${names}")
string(REGEX REPLACE "\t\\[ *[0-9]+\\] ([^\n]*)\n" "\\1;" names "${names}")
list(REMOVE_ITEM names "")
compare("Exports" "${names}" "${EXPORTS}")

# Otherwise the same sources would give another file every time.
if(NOT headers MATCHES "Time/Date[^\n]* 1970\n")
  message(SEND_ERROR "The image holds the time of its making.")
endif()
