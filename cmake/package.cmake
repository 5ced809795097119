# The target `package-xll`: what is given to users, in the folder `package` of the build tree.
#
#   Quantiverse.xll     for 32-bit Excel, with the image for 64-bit Excel lying behind it: Windows
#                       reads no further than an image's last section
#   Quantiverse64.xll   for 64-bit Excel
#   Quantiverse-<version>-windows.zip   both, the licence and the user's guide
#   SHA256SUMS          of these three
#
# Either Windows build tree does. The image of the other width comes from the build tree of the
# other preset, which is made if need be. The same images give the same bytes: files in the zip have
# all one date. Needs the program zip.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  if(MINGW_ARCH STREQUAL "i686")
    set(own 32)
    set(other 64)
    set(other_preset windows-x64)
  else()
    set(own 64)
    set(other 32)
    set(other_preset windows-x86)
  endif()
  set(QUANTIVERSE_OTHER_BUILD ${PROJECT_SOURCE_DIR}/build/${other_preset}
      CACHE PATH "Build tree of the image of the other width, for package-xll")
  add_custom_target(package-xll
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -DVERSION=${PROJECT_VERSION}
            -DPACKAGE=${PROJECT_BINARY_DIR}/package -DIMAGE${own}=$<TARGET_FILE:quantiverse_addin>
            -DPRESET=${other_preset} -DBUILD=${QUANTIVERSE_OTHER_BUILD}
            -DBUILD_TESTING=${BUILD_TESTING}
            -DIMAGE${other}=${QUANTIVERSE_OTHER_BUILD}/bin/$<TARGET_FILE_NAME:quantiverse_addin>
            -P ${CMAKE_CURRENT_LIST_FILE}
    DEPENDS quantiverse_addin USES_TERMINAL VERBATIM)
  return()
endif()

cmake_minimum_required(VERSION 3.25)
set(GUIDE addin windows language functions units solving)  # pages of docs/
set(COMBINED Quantiverse.xll)
set(FOR64 Quantiverse64.xll)
set(ARCHIVE Quantiverse-${VERSION}-windows.zip)
find_program(ZIP zip REQUIRED)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# A text as Windows' older editors want it. Pages refer to each other by name.
function(copy_text from to)
  file(READ ${from} text)
  foreach(page IN LISTS GUIDE)
    string(REPLACE "(${page}.md" "(${page}.txt" text "${text}")
  endforeach()
  string(REPLACE "\n" "\r\n" text "${text}")
  file(WRITE ${to} "${text}")
endfunction()

if(NOT EXISTS ${BUILD}/build.ninja)
  run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} --preset ${PRESET}
      -DBUILD_TESTING=${BUILD_TESTING})
endif()
run(${CMAKE_COMMAND} --build ${BUILD} --target quantiverse_addin)

file(REMOVE_RECURSE ${PACKAGE})
set(content ${PACKAGE}/content)
file(MAKE_DIRECTORY ${content}/guide)
run(${CMAKE_COMMAND} -E cat ${IMAGE32} ${IMAGE64} OUTPUT_FILE ${content}/${COMBINED})
configure_file(${IMAGE64} ${content}/${FOR64} COPYONLY NO_SOURCE_PERMISSIONS)
copy_text(${SOURCE}/LICENSE ${content}/LICENSE.txt)
foreach(page IN LISTS GUIDE)
  copy_text(${SOURCE}/docs/${page}.md ${content}/guide/${page}.txt)
endforeach()

file(GLOB_RECURSE files RELATIVE ${content} ${content}/*)
list(SORT files)
list(TRANSFORM files PREPEND ${content}/ OUTPUT_VARIABLE paths)
file(CHMOD ${paths} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
# The format has local times, from 1980 on, in steps of two seconds. Without -X it would have others.
run(touch -d "1980-01-01 00:00:00 UTC" ${paths})
run(${CMAKE_COMMAND} -E env TZ=UTC ${ZIP} -q -9 -X ../${ARCHIVE} ${files} WORKING_DIRECTORY ${content})

file(RENAME ${content}/${COMBINED} ${PACKAGE}/${COMBINED})
file(RENAME ${content}/${FOR64} ${PACKAGE}/${FOR64})
file(REMOVE_RECURSE ${content})
set(sums)
foreach(file IN ITEMS ${COMBINED} ${FOR64} ${ARCHIVE})
  file(SHA256 ${PACKAGE}/${file} sum)
  string(APPEND sums "${sum}  ${file}\n")
endforeach()
file(WRITE ${PACKAGE}/SHA256SUMS "${sums}")
message("Made ${PACKAGE}")
