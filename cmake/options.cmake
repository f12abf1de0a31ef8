set(TARNWICK_SANITIZE "" CACHE STRING "Sanitizers for every target, as for -fsanitize=")
option(TARNWICK_FUZZ "Build the libFuzzer targets (needs clang)" OFF)
option(TARNWICK_PCH "Use precompiled headers" ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_library(tarnwick_flags INTERFACE)
target_compile_options(tarnwick_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
                       -Woverloaded-virtual -Wnull-dereference -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # ccache needs it to share objects that use a precompiled header.
  target_compile_options(tarnwick_flags INTERFACE -fpch-preprocess)
  # GCC 12 sees null dereferences, overlaps and overruns inside its own std::string at -O2 and above.
  target_compile_options(tarnwick_flags INTERFACE -Wno-null-dereference -Wno-restrict -Wno-stringop-overflow
                         -Wno-stringop-overread -Wno-array-bounds)
endif()
if(TARNWICK_SANITIZE)
  target_compile_options(tarnwick_flags INTERFACE -fsanitize=${TARNWICK_SANITIZE} -fno-omit-frame-pointer
                         -fno-sanitize-recover=all)
  target_link_options(tarnwick_flags INTERFACE -fsanitize=${TARNWICK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tarnwick_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(TARNWICK_FUZZ)
  target_compile_options(tarnwick_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What tests need under a sanitizer: what is known of libraries that were built without one.
set(TARNWICK_SANITIZER_ENVIRONMENT
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizers/thread.supp"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizers/leak.supp:print_suppressions=0")
