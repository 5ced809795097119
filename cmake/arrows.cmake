# Holds every #include of the project to the floors of the house: a folder sees the folders below
# it and no others, and no file includes itself by way of others.
#
#   include(cmake/arrows.cmake)                       the target `qv_arrows`, part of every build
#   cmake -DROOT=<source folder> -P cmake/arrows.cmake    the check itself

if(CMAKE_SCRIPT_MODE_FILE)
  cmake_minimum_required(VERSION 3.25)
endif()

# Which folders the files of a folder may include from. A folder is named as an #include names it;
# `quantiverse` are the public headers and `door` is the source behind them.
set(SEES_text text)
set(SEES_quantity quantity ${SEES_text})
set(SEES_numerics numerics ${SEES_text})
set(SEES_language language numerics ${SEES_quantity})
set(SEES_builtins builtins ${SEES_language})
set(SEES_quantiverse quantiverse)
set(SEES_door quantiverse ${SEES_builtins})
set(SEES_cli quantiverse)
set(SEES_addin/services addin/services quantiverse ${SEES_text})
set(SEES_addin addin ${SEES_addin/services})
set(SEES_addin/windows addin/windows ${SEES_addin})
set(SEES_host host)
set(SEES_host/xlcall32 host)
set(SEES_host/xlcall32 host)

set(FOLDERS text quantity numerics language builtins quantiverse addin host)

function(complain text)
  message("${text}")
  set_property(GLOBAL PROPERTY COMPLAINED TRUE)
endfunction()

# The name of the folder that `file` is in, as in the table above.
function(folder_of file result)
  cmake_path(GET file PARENT_PATH folder)
  if(folder STREQUAL "core")
    set(folder door)
  endif()
  string(REGEX REPLACE "^core/(include/)?" "" folder "${folder}")
  set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# Checks the includes of `file` and gives those that are files of the project.
function(check_file file result)
  folder_of("${file}" folder)
  if(NOT DEFINED SEES_${folder})
    complain( "${file}: the folder has no floor in cmake/arrows.cmake")
    return()
  endif()
  set(edges)
  file(STRINGS "${ROOT}/${file}" includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
  foreach(line IN LISTS includes)
    string(REGEX REPLACE "^[^<\"]*([<\"])([^>\"]*).*" "\\1;\\2" parts "${line}")
    list(POP_FRONT parts quote)
    cmake_path(GET parts PARENT_PATH seen)
    string(REGEX REPLACE "/.*" "" top "${seen}")
    if(quote STREQUAL "<" AND NOT top IN_LIST FOLDERS)
      continue()  # not ours
    elseif(NOT top IN_LIST FOLDERS)
      complain("${file}: #include \"${parts}\" has to name its folder, as in \"text/cursor.h\"")
    elseif(NOT seen IN_LIST SEES_${folder})
      string(REPLACE ";" ", " allowed "${SEES_${folder}}")
      complain(
        "${file}: #include \"${parts}\" points the wrong way; ${folder} may include ${allowed}")
    endif()
    foreach(place core core/include .)
      if(EXISTS "${ROOT}/${place}/${parts}")
        cmake_path(SET edge NORMALIZE "${place}/${parts}")
        list(APPEND edges "${edge}")
      endif()
    endforeach()
  endforeach()
  set(${result} "${edges}" PARENT_SCOPE)
endfunction()

# Files that include nothing of ours can't be on a circle; without them, others can't. What
# remains in the end holds a circle.
function(check_circles files)
  set(done FALSE)
  while(NOT done)
    set(done TRUE)
    foreach(file IN LISTS files)
      set(left)
      foreach(edge IN LISTS INCLUDES_${file})
        if(edge IN_LIST files)
          list(APPEND left "${edge}")
        endif()
      endforeach()
      set(INCLUDES_${file} ${left})
      if(NOT left)
        list(REMOVE_ITEM files "${file}")
        set(done FALSE)
      endif()
    endforeach()
  endwhile()
  if(NOT files)
    return()
  endif()
  list(GET files 0 at)
  set(path)
  while(NOT at IN_LIST path)
    list(APPEND path "${at}")
    list(GET INCLUDES_${at} 0 at)
  endwhile()
  list(FIND path "${at}" start)
  list(SUBLIST path ${start} -1 path)
  list(JOIN path " -> " path)
  complain( "These files include each other: ${path} -> ${at}")
endfunction()

set(PATTERNS)
foreach(folder core cli addin host)
  list(APPEND PATTERNS ${folder}/*.h ${folder}/*.cpp)
endforeach()

if(CMAKE_SCRIPT_MODE_FILE)
  list(TRANSFORM PATTERNS PREPEND "${ROOT}/")
  file(GLOB_RECURSE files RELATIVE "${ROOT}" ${PATTERNS})
  foreach(file IN LISTS files)
    check_file("${file}" INCLUDES_${file})
  endforeach()
  check_circles("${files}")
  get_property(complained GLOBAL PROPERTY COMPLAINED)
  if(complained)
    message(FATAL_ERROR "Includes go against the floors of cmake/arrows.cmake.")
  endif()
else()
  # Globbed, so that no file escapes by not being listed.
  list(TRANSFORM PATTERNS PREPEND "${PROJECT_SOURCE_DIR}/")
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${PATTERNS})
  add_custom_command(OUTPUT arrows.stamp
    COMMAND ${CMAKE_COMMAND} -DROOT=${PROJECT_SOURCE_DIR} -P ${CMAKE_CURRENT_LIST_FILE}
    COMMAND ${CMAKE_COMMAND} -E touch arrows.stamp
    DEPENDS ${files} ${CMAKE_CURRENT_LIST_FILE}
    COMMENT "Checking the direction of includes"
    VERBATIM)
  add_custom_target(qv_arrows ALL DEPENDS arrows.stamp)
endif()
