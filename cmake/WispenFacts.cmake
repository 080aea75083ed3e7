# The product's facts, out of one file: for the build as WISPEN_FACT_<name>, for the product's own code as a header.
set(facts_file ${PROJECT_SOURCE_DIR}/bundle/facts/facts.json)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${facts_file})
file(READ ${facts_file} facts)
foreach(fact name package bundle domain notification companion minimumSystem)
  string(JSON WISPEN_FACT_${fact} GET ${facts} ${fact})
endforeach()

# What other code of the process may look for besides the classes, as the linker of the phone's bundle reads it.
string(JSON exports GET ${facts} exports)
string(REGEX MATCHALL "[A-Za-z0-9_]+" exports "${exports}")
list(TRANSFORM exports PREPEND _)
list(JOIN exports "\n" exports)
set(WISPEN_BUNDLE_EXPORTS ${CMAKE_BINARY_DIR}/bundle-exports.txt)
file(CONFIGURE OUTPUT ${WISPEN_BUNDLE_EXPORTS} CONTENT "@exports@\n" @ONLY)

# The header, in a folder of its own: no path leads from it to host/.
set(WISPEN_FACTS_INCLUDES ${CMAKE_BINARY_DIR}/facts-includes)
configure_file(${PROJECT_SOURCE_DIR}/bundle/facts/facts.hpp.in ${WISPEN_FACTS_INCLUDES}/bundle/facts/facts.hpp @ONLY)
add_library(wispen_facts INTERFACE)
target_include_directories(wispen_facts INTERFACE ${WISPEN_FACTS_INCLUDES})

set(WISPEN_BUNDLE_DIR ${WISPEN_OUTPUT_DIR}/${WISPEN_FACT_bundle}.bundle)
set(WISPEN_BUNDLE_FACTS ${WISPEN_OUTPUT_DIR}/${WISPEN_FACT_bundle}.facts.json)
