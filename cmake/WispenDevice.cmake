# The cross-build: a bundle's sources as Mach-O images for phones, made with Debian's compilers and linker and the
# headers and stubs below device/.
#
# The linker is of one version on purpose: it takes arm64e objects for arm64 ones, and a later one may not.

find_program(WISPEN_DEVICE_CXX NAMES clang++-14 clang++ REQUIRED)
find_program(WISPEN_DEVICE_LINKER NAMES ld64.lld-16 REQUIRED)
if(WISPEN_ARM64E)
  find_program(WISPEN_ARM64E_CXX NAMES clang++-22 REQUIRED)
endif()
find_path(WISPEN_DEVICE_CXX_HEADERS __bit_reference PATHS /usr/lib/llvm-14/include/c++/v1 NO_DEFAULT_PATH
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)

set(WISPEN_DEVICE_MINIMUM 15.0)  # the oldest system that the bundle is for

# Each compiler with all that every image is made with. Every warning that the desktop has. Small before fast: a
# settings page waits for its user, and the grouping of pixels is written in vectors anyway. No path of the building
# machine gets into the image.
foreach(compiler WISPEN_DEVICE_CXX WISPEN_ARM64E_CXX)
  if(NOT ${compiler})
    continue()
  endif()
  execute_process(COMMAND ${${compiler}} -print-resource-dir
                  OUTPUT_VARIABLE resources OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(${compiler}_COMMAND ${CMAKE_CXX_COMPILER_LAUNCHER} ${${compiler}}
    -std=c++20 -Os -DNDEBUG -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -Wnon-virtual-dtor
    -fno-omit-frame-pointer -fvisibility=hidden -fvisibility-inlines-hidden
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
    -nostdinc -nostdinc++
    -isystem ${PROJECT_SOURCE_DIR}/device/include/libc++
    -isystem ${WISPEN_DEVICE_CXX_HEADERS}
    -isystem ${resources}/include
    -isystem ${PROJECT_SOURCE_DIR}/device/include/c
    -I${WISPEN_BUNDLE_INCLUDES} -I${WISPEN_FACTS_INCLUDES})
endforeach()

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

# wispen_device_object(OBJECT SOURCE TRIPLE [options...]): compiles one source for the phone.
function(wispen_device_object OBJECT SOURCE TRIPLE)
  get_filename_component(folder ${OBJECT} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${SOURCE})
  if(TRIPLE MATCHES "^arm64e-")
    # By way of assembly, out of which two directives go: they would keep every function out of the compact table of
    # unwinding codes, which the phone's unwinder reads as signed anyway. What frees by size came with iOS 17's library.
    set(compile
      COMMAND ${WISPEN_ARM64E_CXX_COMMAND} --target=${TRIPLE} -fno-sized-deallocation ${ARGN}
              -MD -MT ${OBJECT} -MF ${OBJECT}.d -S ${SOURCE} -o ${OBJECT}.s
      COMMAND sed -i -E "/^[[:space:]]*\\.cfi_(negate_ra_state|b_key_frame)[[:space:]]*$/d" ${OBJECT}.s
      COMMAND ${WISPEN_ARM64E_CXX} --target=${TRIPLE} -c ${OBJECT}.s -o ${OBJECT})
  else()
    set(compile
      COMMAND ${WISPEN_DEVICE_CXX_COMMAND} --target=${TRIPLE} ${ARGN} -MD -MF ${OBJECT}.d -c ${SOURCE} -o ${OBJECT})
  endif()
  add_custom_command(
    OUTPUT ${OBJECT}
    ${compile}
    DEPENDS ${SOURCE}
    DEPFILE ${OBJECT}.d
    COMMENT "Building ${relative} for ${TRIPLE}"
    VERBATIM)
endfunction()

# wispen_device_image(NAME OUTPUT file TRIPLE triple PLATFORM name TARGETS desktop targets... [SOURCES ...]
#                     EXPORTS file [LINK options...] [OPTIONS compile options...]): an image made of the targets' sources. NAME is its target.
function(wispen_device_image NAME)
  cmake_parse_arguments(ARG "" "OUTPUT;TRIPLE;PLATFORM;EXPORTS" "TARGETS;SOURCES;LINK;OPTIONS" ${ARGN})
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
    wispen_device_object(${object} ${source} ${ARG_TRIPLE} ${options} ${ARG_OPTIONS})
    list(APPEND objects ${object})
  endforeach()

  get_filename_component(folder ${ARG_OUTPUT} DIRECTORY)
  set(linked ${ARG_OUTPUT})
  set(link_architecture ${architecture})
  set(before)
  set(after)
  if(architecture STREQUAL arm64e)
    # The code signature names the file, so the linked one has its name too.
    get_filename_component(file ${ARG_OUTPUT} NAME)
    set(linked ${CMAKE_CURRENT_BINARY_DIR}/${NAME}.linked/${file})
    set(link_architecture arm64)
    set(before COMMAND wispen_slices check ${objects})
    set(after COMMAND wispen_slices finish ${linked} ${ARG_OUTPUT})
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${NAME}.linked)
  endif()
  file(MAKE_DIRECTORY ${folder})
  # The code signature names the file, so it is written under its own name at once; nothing may change it later.
  add_custom_command(
    OUTPUT ${ARG_OUTPUT}
    ${before}
    COMMAND ${WISPEN_DEVICE_LINKER} -arch ${link_architecture}
            -platform_version ${ARG_PLATFORM} ${WISPEN_DEVICE_MINIMUM} ${WISPEN_DEVICE_MINIMUM}
            -bundle -dead_strip --icf=all -adhoc_codesign -S -x -exported_symbols_list ${ARG_EXPORTS} ${ARG_LINK}
            -rpath @loader_path/.jbroot/usr/lib -rpath /var/jb/usr/lib -rpath /usr/lib
            -o ${linked} ${objects} ${WISPEN_DEVICE_STUB_OPTIONS}
    ${after}
    DEPENDS ${objects} ${WISPEN_DEVICE_STUBS} ${ARG_EXPORTS}
    COMMENT "Linking ${NAME}"
    VERBATIM)
  add_custom_target(${NAME} DEPENDS ${ARG_OUTPUT})
endfunction()

# wispen_device_bundle(NAME OUTPUT file [as wispen_device_image, but no TRIPLE, PLATFORM or form of fixups]): the code
# of a bundle for every phone: one file of a slice for each kind of processor, arm64 (to A11) and arm64e (from A12 on),
# of the same sources. Each slice also stands by itself in a folder of its kind's name beside OUTPUT. With
# WISPEN_ARM64E=OFF the file is the arm64 slice alone.
function(wispen_device_bundle NAME)
  cmake_parse_arguments(ARG "" "OUTPUT" "" ${ARGN})
  get_filename_component(folder ${ARG_OUTPUT} DIRECTORY)
  get_filename_component(file ${ARG_OUTPUT} NAME)
  set(architectures arm64)
  if(WISPEN_ARM64E)
    list(APPEND architectures arm64e)
  endif()
  set(slices)
  foreach(architecture ${architectures})
    set(slice ${folder}/${architecture}/${file})
    wispen_device_image(${NAME}_${architecture}
      OUTPUT ${slice}
      TRIPLE ${architecture}-apple-ios${WISPEN_DEVICE_MINIMUM}
      PLATFORM ios
      LINK -fixup_chains
      ${ARG_UNPARSED_ARGUMENTS})
    list(APPEND slices ${slice})
  endforeach()
  if(WISPEN_ARM64E)
    set(join wispen_slices join ${ARG_OUTPUT} ${slices})
  else()
    set(join ${CMAKE_COMMAND} -E copy ${slices} ${ARG_OUTPUT})
  endif()
  add_custom_command(OUTPUT ${ARG_OUTPUT} COMMAND ${join} DEPENDS ${slices} COMMENT "Joining ${NAME}" VERBATIM)
  add_custom_target(${NAME} DEPENDS ${ARG_OUTPUT})
endfunction()
