# Build-wide settings: language level, warnings, sanitizers, where the outputs go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

# Lines and functions for backtraces; what a debugger wants beyond that costs a third of the build's time and most
# of the library's size. `cmake --preset default -D CMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g"` gives it back.
if(NOT CMAKE_CXX_FLAGS_RELWITHDEBINFO OR CMAKE_CXX_FLAGS_RELWITHDEBINFO STREQUAL "-O2 -g -DNDEBUG")
  set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
endif()

option(WISPEN_BUILD_TESTS "Build the tests" ON)
option(WISPEN_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(WISPEN_BUILD_FUZZERS "Build the libFuzzer targets (needs clang)" OFF)
option(WISPEN_ARM64E "Build the slice for phones from A12 on (needs clang 22)" ON)
option(WISPEN_COVERAGE "Count which lines the tests reach (needs g++)" OFF)
set(WISPEN_SANITIZE "" CACHE STRING "Comma-separated sanitizers, as -fsanitize takes them")
set(WISPEN_OUTPUT_DIR ${CMAKE_BINARY_DIR}/out CACHE PATH "Where programs, libraries and the bundle go")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -fno-omit-frame-pointer
                    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)

if(WISPEN_SANITIZE)
  add_compile_options(-fsanitize=${WISPEN_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${WISPEN_SANITIZE})
  # With the sanitizers' checks between, g++ takes the members of a variant that it never reads for unset ones.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

if(WISPEN_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)  # many threads count at once
  add_link_options(--coverage)
endif()

# The code under test must report its branches to the fuzzer, not only the fuzz target itself.
if(WISPEN_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# g++ 12 sees overlapping copies in every "literal" + std::string at -O3 (its bug 105651, gone in 13).
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()
