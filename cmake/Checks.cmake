# Formatting and static checks. "format" rewrites, "check" only complains.
set(KT_PATTERNS "")
foreach(folder host plexidex events editors search widgets pages calendar tasks package tests benchmarks)
  list(APPEND KT_PATTERNS ${folder}/*.h ${folder}/*.cpp)
endforeach()
file(GLOB_RECURSE KT_SOURCES CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} ${KT_PATTERNS})
set(KT_UNITS ${KT_SOURCES})
list(FILTER KT_UNITS INCLUDE REGEX "\\.cpp$")

find_program(CLANG_FORMAT clang-format)
find_program(RUN_CLANG_TIDY run-clang-tidy)
if(CLANG_FORMAT AND RUN_CLANG_TIDY)
  add_custom_target(format COMMAND ${CLANG_FORMAT} -i ${KT_SOURCES} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)
  add_custom_target(check
    COMMAND ${CLANG_FORMAT} --dry-run --Werror ${KT_SOURCES}
    COMMAND ${RUN_CLANG_TIDY} -quiet -p ${CMAKE_BINARY_DIR} ${KT_UNITS}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)
  # The units of forms include headers that are made from their layouts.
  add_dependencies(check plexidex ktreminds kt_forms)
endif()

# What runs under the sanitizers in ./test.
add_custom_target(all_tests)
foreach(name util data events editors pages calendar tasks search print forms ical vcard cli app alerts holidays)
  if(TARGET test_${name})
    add_dependencies(all_tests test_${name})
  endif()
endforeach()

add_test(NAME build.Core_Without_Qt
  COMMAND ${CMAKE_COMMAND} -D COMPILER=${CMAKE_CXX_COMPILER}
          -D "INCLUDES=$<JOIN:$<TARGET_PROPERTY:ktreminds_core,INCLUDE_DIRECTORIES>,|>"
          -D FOLDER=${CMAKE_BINARY_DIR}/core_without_qt -P ${CMAKE_SOURCE_DIR}/cmake/Core_Without_Qt.cmake)
