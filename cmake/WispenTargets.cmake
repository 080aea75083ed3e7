# Functions that make the project's targets, so that a folder's CMakeLists.txt only lists its files.

find_package(Threads REQUIRED)

# The Objective-C runtime and Foundation. Nothing in C++ names a symbol of Foundation, so the linker
# would drop it without --no-as-needed, and every message would be silently lost.
find_library(WISPEN_FOUNDATION_LIBRARY gnustep-base REQUIRED)
find_library(WISPEN_OBJC_LIBRARY NAMES objc libobjc.so.4
             PATHS /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/12 REQUIRED)
add_library(wispen_foundation_runtime INTERFACE)
target_link_options(wispen_foundation_runtime INTERFACE -Wl,--no-as-needed)
target_link_libraries(wispen_foundation_runtime INTERFACE ${WISPEN_FOUNDATION_LIBRARY} ${WISPEN_OBJC_LIBRARY})

# wispen_object_library(NAME SOURCES... DEPENDS...): a floor of the house. Its objects go into
# libwispenhost.so or the bundle, and straight into the tests that need no runtime.
function(wispen_object_library NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${NAME} STATIC ${ARG_SOURCES})
  target_include_directories(${NAME} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${NAME} PUBLIC ${ARG_DEPENDS} Threads::Threads)
endfunction()

# wispen_test(NAME SOURCES... DEPENDS...): one GoogleTest program, each of its tests known to CTest.
function(wispen_test NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  find_package(GTest REQUIRED)
  include(GoogleTest)
  add_executable(${NAME} ${ARG_SOURCES})
  target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${NAME} PRIVATE ${ARG_DEPENDS} GTest::gmock GTest::gtest_main Threads::Threads)
  gtest_discover_tests(${NAME} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()

# wispen_benchmark(NAME SOURCES... DEPENDS...): one Google Benchmark program.
function(wispen_benchmark NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  find_package(benchmark REQUIRED)
  add_executable(${NAME} ${ARG_SOURCES})
  target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${NAME} PRIVATE ${ARG_DEPENDS} benchmark::benchmark Threads::Threads)
endfunction()

# wispen_fuzzer(NAME SEEDS dir OWN patterns... SOURCES... DEPENDS...): a libFuzzer program. Without libFuzzer the same
# target is a plain program that replays the files it is given, so that `make test` replays the seeds. The sources that
# match OWN are listed in NAME.own in the build folder.
add_custom_target(fuzzers)
function(wispen_fuzzer NAME)
  cmake_parse_arguments(ARG "" "SEEDS" "OWN;SOURCES;DEPENDS" ${ARGN})
  set(own "")
  foreach(pattern ${ARG_OWN})
    file(GLOB matching CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${pattern})
    if(NOT matching)
      message(FATAL_ERROR "${NAME}: no source is ${pattern}")
    endif()
    list(APPEND own ${matching})
  endforeach()
  list(JOIN own "\n" own)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${NAME}.own "${own}\n")
  if(WISPEN_BUILD_FUZZERS)
    add_executable(${NAME} ${ARG_SOURCES})
    target_compile_options(${NAME} PRIVATE -fsanitize=fuzzer)
    target_link_options(${NAME} PRIVATE -fsanitize=fuzzer)
  else()
    add_executable(${NAME} ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
    add_test(NAME ${NAME}_seeds COMMAND ${NAME} ${ARG_SEEDS})
  endif()
  target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${NAME} PRIVATE ${ARG_DEPENDS})
  add_dependencies(fuzzers ${NAME})
endfunction()
