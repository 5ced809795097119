# Makes a small tree under ROOT, adds LINE to its FILE and checks it: the check has to fail with
# MESSAGE, a regular expression, or to pass if that is empty.
file(REMOVE_RECURSE "${ROOT}")
file(WRITE "${ROOT}/core/text/a.h" "#include <string>\n")
file(WRITE "${ROOT}/core/text/b.h" "#include \"text/a.h\"\n")
file(WRITE "${ROOT}/core/quantity/b.h" "#include \"text/b.h\"\n")
file(WRITE "${ROOT}/core/quantity/e.h" "#include \"quantity/b.h\"\n")
file(WRITE "${ROOT}/core/language/c.h" "#include \"quantity/b.h\"\n#include \"text/b.h\"\n")
file(WRITE "${ROOT}/core/door.cpp" "#include \"language/c.h\"\n#include \"quantiverse/q.h\"\n")
file(WRITE "${ROOT}/core/include/quantiverse/q.h" "#include <string>\n")
file(WRITE "${ROOT}/cli/main.cpp" "#include <sys/stat.h>\n#include \"quantiverse/q.h\"\n")
file(APPEND "${ROOT}/${FILE}" "${LINE}\n")

execute_process(COMMAND ${CMAKE_COMMAND} "-DROOT=${ROOT}" -P ${CHECK}
                RESULT_VARIABLE status ERROR_VARIABLE said)
if(MESSAGE STREQUAL "")
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "A tree without fault was refused: ${said}")
  endif()
elseif(status EQUAL 0 OR NOT said MATCHES "${MESSAGE}")
  message(FATAL_ERROR "Status ${status}, and not \"${MESSAGE}\" but: ${said}")
endif()
