# Run as a script: cmake -DOUTPUT=x.cpp -DFOLDER=dir -P EmbedFiles.cmake
# Writes a table of the folder's SVG files, by name and content, in the order of their names.
file(GLOB files RELATIVE ${FOLDER} ${FOLDER}/*.svg)
list(SORT files)
set(text "// Made from the drawings in host/graphics/symbols; not to be edited.\n#include \"host/graphics/symbol_files.hpp\"\n\n")
string(APPEND text "namespace wispen::graphics {\n\nnamespace {\nconstexpr SymbolFile kFiles[] = {\n")
foreach(file ${files})
  file(READ ${FOLDER}/${file} content)
  string(REGEX REPLACE "\\.svg$" "" name ${file})
  string(APPEND text "    {\"${name}\", R\"svg(${content})svg\"},\n")
endforeach()
string(APPEND text "};\n}  // namespace\n\nstd::span<const SymbolFile> symbol_files() { return kFiles; }\n\n}  // namespace wispen::graphics\n")
file(WRITE ${OUTPUT} "${text}")
