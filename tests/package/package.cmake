# Looks at what the target package-xll has made: the files, what is in them, and that making them
# again makes the same.
#   cmake -DPACKAGE=<folder> -DVERSION=<x.y.z> -DIMAGE=<32-bit image>
#         -DBUILD=<build tree> -DSOURCE=<source folder> -P package.cmake
cmake_minimum_required(VERSION 3.25)
set(ARCHIVE Quantiverse-${VERSION}-windows.zip)

# What the command writes.
function(get result)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${PACKAGE} OUTPUT_VARIABLE output
                  COMMAND_ERROR_IS_FATAL ANY)
  set(${result} "${output}" PARENT_SCOPE)
endfunction()

function(expect what actual expected)
  if(NOT actual STREQUAL expected)
    message(SEND_ERROR "${what}: \"${actual}\" and not \"${expected}\"")
  endif()
endfunction()

file(GLOB files RELATIVE ${PACKAGE} ${PACKAGE}/*)
expect("Files" "${files}" "${ARCHIVE};Quantiverse.xll;Quantiverse64.xll;SHA256SUMS")

execute_process(COMMAND cat ${IMAGE} ${PACKAGE}/Quantiverse64.xll
                COMMAND cmp - ${PACKAGE}/Quantiverse.xll COMMAND_ERROR_IS_FATAL ANY)
# Behind "PE" and two zeros, the processor: 014C and 8664, the low byte first.
set(processors)
foreach(file IN ITEMS Quantiverse.xll Quantiverse64.xll)
  file(READ ${PACKAGE}/${file} header LIMIT 1024 HEX)
  string(REGEX MATCH "50450000(....)" header "${header}")
  list(APPEND processors ${CMAKE_MATCH_1})
endforeach()
expect("Processors" "${processors}" "4c01;6486")

get(checked sha256sum --check --strict SHA256SUMS)
expect("Sums" "${checked}" "Quantiverse.xll: OK\nQuantiverse64.xll: OK\n${ARCHIVE}: OK\n")

string(CONCAT expected "LICENSE.txt\nQuantiverse.xll\nQuantiverse64.xll\n"
       "guide/addin.txt\nguide/functions.txt\nguide/language.txt\nguide/solving.txt\n"
       "guide/units.txt\nguide/windows.txt\n")
get(listed ${CMAKE_COMMAND} -E tar tf ${ARCHIVE})
expect("In the archive" "${listed}" "${expected}")
set(content ${BUILD}/package_content)
file(REMOVE_RECURSE ${content})
file(ARCHIVE_EXTRACT INPUT ${PACKAGE}/${ARCHIVE} DESTINATION ${content})
foreach(file IN ITEMS Quantiverse.xll Quantiverse64.xll)
  execute_process(COMMAND cmp ${content}/${file} ${PACKAGE}/${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# Lines end as editors on Windows want it.
execute_process(COMMAND sed "s/$/\\r/" ${SOURCE}/LICENSE COMMAND cmp - ${content}/LICENSE.txt
                COMMAND_ERROR_IS_FATAL ANY)
file(READ ${content}/guide/addin.txt guide)
if(NOT guide MATCHES "[(]units[.]txt[)]" OR guide MATCHES "[(]units[.]md[)]")
  message(SEND_ERROR "The guide's pages don't refer to each other.")
endif()

file(READ ${PACKAGE}/SHA256SUMS before)
get(made ${CMAKE_COMMAND} --build ${BUILD} --target package-xll)
file(READ ${PACKAGE}/SHA256SUMS after)
expect("Made again" "${after}" "${before}")
