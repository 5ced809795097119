# Builds for Windows on another system, with the cross compilers of mingw-w64. MINGW_ARCH is
# x86_64 or i686.
set(CMAKE_SYSTEM_NAME Windows)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MINGW_ARCH)
if(NOT MINGW_ARCH)
  set(MINGW_ARCH x86_64)
endif()
set(CMAKE_SYSTEM_PROCESSOR ${MINGW_ARCH})

# The variant with POSIX threads: the other has no std::mutex.
set(triple ${MINGW_ARCH}-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_DLLTOOL ${triple}-dlltool)
set(CMAKE_OBJDUMP ${triple}-objdump)
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# One file that needs nothing but the system: the runtime goes into it.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()
if(MINGW_ARCH STREQUAL i686)
  # Doubles are rounded as everywhere else, which the older arithmetic unit doesn't do.
  foreach(language C CXX)
    set(CMAKE_${language}_FLAGS_INIT "-msse2 -mfpmath=sse")
  endforeach()
endif()

find_program(WINE NAMES wine wine-stable)
if(WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${WINE})
endif()
