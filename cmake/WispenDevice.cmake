# The cross-build: the bundle's sources as a Mach-O image, made with Debian's clang and linker and the headers
# and stubs below device/.

find_program(WISPEN_DEVICE_CXX NAMES clang++-14 clang++ REQUIRED)
find_program(WISPEN_DEVICE_LINKER NAMES ld64.lld-16 REQUIRED)
find_path(WISPEN_DEVICE_CXX_HEADERS __bit_reference PATHS /usr/lib/llvm-14/include/c++/v1 NO_DEFAULT_PATH
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
execute_process(COMMAND ${WISPEN_DEVICE_CXX} -print-resource-dir
                OUTPUT_VARIABLE WISPEN_DEVICE_RESOURCES OUTPUT_STRIP_TRAILING_WHITESPACE)

set(WISPEN_DEVICE_MINIMUM 15.0)  # the oldest system that the bundle is for

# Every warning that the desktop has. Small before fast: a settings page waits for its user, and the grouping
# of pixels is written in vectors anyway. No path of the building machine gets into the image.
set(WISPEN_DEVICE_FLAGS
  -std=c++20 -Os -DNDEBUG -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -Wnon-virtual-dtor
  -fno-omit-frame-pointer -fvisibility=hidden -fvisibility-inlines-hidden
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
  -nostdinc -nostdinc++
  -isystem ${PROJECT_SOURCE_DIR}/device/include/libc++
  -isystem ${WISPEN_DEVICE_CXX_HEADERS}
  -isystem ${WISPEN_DEVICE_RESOURCES}/include
  -isystem ${PROJECT_SOURCE_DIR}/device/include/c
  -I${WISPEN_BUNDLE_INCLUDES})

file(GLOB WISPEN_DEVICE_STUBS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/device/stubs/*.tbd)
# What a device may lack must not keep the bundle from being loaded.
set(WISPEN_DEVICE_WEAK OnBoardingKit libcolorpicker libgcuniversal)
set(WISPEN_DEVICE_STUB_OPTIONS)
foreach(stub ${WISPEN_DEVICE_STUBS})
  get_filename_component(name ${stub} NAME_WLE)
  if(name IN_LIST WISPEN_DEVICE_WEAK)
    list(APPEND WISPEN_DEVICE_STUB_OPTIONS -weak_library)
  endif()
  list(APPEND WISPEN_DEVICE_STUB_OPTIONS ${stub})
endforeach()

# wispen_device_image(NAME OUTPUT file TRIPLE triple PLATFORM name TARGETS desktop targets... [SOURCES ...]
#                     [LINK options...] [OPTIONS compile options...]
#                     [EXPORTS file]): an image made of the targets' sources. NAME is its target.
function(wispen_device_image NAME)
  cmake_parse_arguments(ARG "" "OUTPUT;TRIPLE;PLATFORM;EXPORTS" "TARGETS;SOURCES;LINK;OPTIONS" ${ARGN})
  if(NOT ARG_EXPORTS)
    set(ARG_EXPORTS ${PROJECT_SOURCE_DIR}/device/exports.txt)
  endif()
  string(REGEX MATCH "^[^-]+" architecture ${ARG_TRIPLE})
  set(entries)
  foreach(target ${ARG_TARGETS})
    get_target_property(sources ${target} SOURCES)
    get_target_property(folder ${target} SOURCE_DIR)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    list(TRANSFORM sources PREPEND ${target}|${folder}/)
    list(APPEND entries ${sources})
  endforeach()
  list(TRANSFORM ARG_SOURCES PREPEND |)
  set(objects)
  foreach(entry ${entries} ${ARG_SOURCES})
    string(REGEX MATCH "^([^|]*)\\|(.*)$" matched ${entry})
    set(target ${CMAKE_MATCH_1})
    set(source ${CMAKE_MATCH_2})
    set(options)
    if(target)
      # The target's own options; what its folder inherits is the desktop's (sanitizers, say).
      get_target_property(options ${target} COMPILE_OPTIONS)
      get_target_property(folder ${target} SOURCE_DIR)
      get_directory_property(inherited DIRECTORY ${folder} COMPILE_OPTIONS)
      list(REMOVE_ITEM options ${inherited})
      get_source_file_property(own ${source} TARGET_DIRECTORY ${target} COMPILE_OPTIONS)
      if(architecture STREQUAL x86_64)  # a file's own options are a processor's
        list(APPEND options ${own})
      endif()
      list(FILTER options EXCLUDE REGEX "NOTFOUND$")
    endif()
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${source})
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${NAME}.objects/${relative}.o)
    get_filename_component(folder ${object} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(
      OUTPUT ${object}
      COMMAND ${WISPEN_DEVICE_CXX} --target=${ARG_TRIPLE} ${WISPEN_DEVICE_FLAGS} ${options} ${ARG_OPTIONS}
              -MD -MF ${object}.d -c ${source} -o ${object}
      DEPENDS ${source}
      DEPFILE ${object}.d
      COMMENT "Building ${relative} for ${ARG_TRIPLE}"
      VERBATIM)
    list(APPEND objects ${object})
  endforeach()

  get_filename_component(folder ${ARG_OUTPUT} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  # The code signature names the file, so it is written under its own name at once; nothing may change it later.
  add_custom_command(
    OUTPUT ${ARG_OUTPUT}
    COMMAND ${WISPEN_DEVICE_LINKER} -arch ${architecture}
            -platform_version ${ARG_PLATFORM} ${WISPEN_DEVICE_MINIMUM} ${WISPEN_DEVICE_MINIMUM}
            -bundle -dead_strip --icf=all -adhoc_codesign -S -x -exported_symbols_list ${ARG_EXPORTS} ${ARG_LINK}
            -rpath @loader_path/.jbroot/usr/lib -rpath /var/jb/usr/lib -rpath /usr/lib
            -o ${ARG_OUTPUT} ${objects} ${WISPEN_DEVICE_STUB_OPTIONS}
    DEPENDS ${objects} ${WISPEN_DEVICE_STUBS} ${ARG_EXPORTS}
    COMMENT "Linking ${NAME}"
    VERBATIM)
  add_custom_target(${NAME} DEPENDS ${ARG_OUTPUT})
endfunction()
