# tarnwick_room(NAME SOURCES ... LINKS ... PCH ...): one folder, one static library tarnwick_NAME.
# LINKS is the room's whole list of rooms and libraries below it; it is PUBLIC because a room's headers use their types.
function(tarnwick_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PCH" ${ARGN})
  add_library(tarnwick_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(tarnwick_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(tarnwick_${name} PUBLIC ${ROOM_LINKS} PRIVATE tarnwick_flags)
  if(TARNWICK_PCH)
    target_precompile_headers(tarnwick_${name} PRIVATE ${ROOM_PCH} <algorithm> <functional> <map> <optional> <string>
                              <string_view> <vector> <fmt/format.h>)
  endif()
endfunction()

# tarnwick_test(NAME SOURCES ... LINKS ... [LABELS ...] [DISPLAY]): one GoogleTest program, each test known to CTest.
# DISPLAY runs it under a virtual display and a session bus of its own.
function(tarnwick_test name)
  cmake_parse_arguments(TEST "DISPLAY" "" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINKS} GTest::gmock GTest::gtest_main tarnwick_flags)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  if(TARNWICK_PCH)
    target_precompile_headers(${name} PRIVATE <map> <string> <vector> <fmt/format.h> <gmock/gmock.h> <gtest/gtest.h>)
  endif()
  if(TEST_DISPLAY)
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/with_display $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES LABELS "window;${TEST_LABELS}" TIMEOUT 300)
  else()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "model;${TEST_LABELS}" TIMEOUT 300)
  endif()
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${TARNWICK_SANITIZER_ENVIRONMENT}")
endfunction()
