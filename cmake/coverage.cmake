# The target `coverage`: runs all tests and sums up which lines and branches of the product they
# reach. Branches that only an exception takes don't count: nearly every call has one.
find_program(GCOVR gcovr REQUIRED)

add_custom_target(coverage
  COMMAND ${CMAKE_COMMAND} -E echo "Forgetting earlier runs, then running the tests"
  COMMAND find . -name "*.gcda" -delete
  COMMAND ${CMAKE_CTEST_COMMAND} --output-on-failure
  COMMAND ${CMAKE_COMMAND} -E make_directory coverage
  COMMAND ${GCOVR} --root ${PROJECT_SOURCE_DIR} --filter ${PROJECT_SOURCE_DIR}/core/
          --filter ${PROJECT_SOURCE_DIR}/cli/ --exclude-throw-branches
          --html-details coverage/index.html --print-summary .
  WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
  COMMENT "Coverage, in detail in ${PROJECT_BINARY_DIR}/coverage"
  VERBATIM USES_TERMINAL)

# Nothing less than everything has to be built before the tests can run.
function(depend_on_targets_below folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  list(REMOVE_ITEM targets coverage)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      add_dependencies(coverage ${target})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder IN LISTS folders)
    depend_on_targets_below(${subfolder})
  endforeach()
endfunction()
depend_on_targets_below(${PROJECT_SOURCE_DIR})
