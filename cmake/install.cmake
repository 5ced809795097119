# What an installation holds: the program, the library with its two headers, and what CMake and
# pkg-config need to find them.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quantiverse)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(BUILD_SHARED_LIBS)
  # The program finds the library wherever the two are put together.
  file(RELATIVE_PATH to_library /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(quantiverse_program PROPERTIES INSTALL_RPATH $ORIGIN/${to_library})
endif()
install(TARGETS quantiverse EXPORT Quantiverse)
install(TARGETS quantiverse_program)
install(DIRECTORY core/include/quantiverse TYPE INCLUDE)

install(EXPORT Quantiverse NAMESPACE Quantiverse:: DESTINATION ${config_dir}
        FILE QuantiverseTargets.cmake)
configure_package_config_file(cmake/QuantiverseConfig.cmake.in QuantiverseConfig.cmake
                              INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(QuantiverseConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuantiverseConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QuantiverseConfigVersion.cmake
        DESTINATION ${config_dir})

# The paths in the pkg-config file are relative to where it lies, so that --prefix may move it.
file(RELATIVE_PATH QUANTIVERSE_PC_PREFIX /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" QUANTIVERSE_PC_PREFIX "${QUANTIVERSE_PC_PREFIX}")
# What a C linker has to be told about C++. A shared library knows it by itself.
if(BUILD_SHARED_LIBS)
  set(QUANTIVERSE_PC_LIBS "")
else()
  set(QUANTIVERSE_PC_LIBS " -lstdc++ -lm -pthread")
endif()
configure_file(cmake/quantiverse.pc.in quantiverse.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quantiverse.pc DESTINATION ${pkgconfig_dir})
