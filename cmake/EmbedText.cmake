# Run as a script: cmake -DOUTPUT=x.cpp -DFILES=a,b -DHEADER=h -DNAMESPACE=n -DFUNCTION=f -P EmbedText.cmake
# Writes a table of text files, by name and content, as the header's `std::span<const TextFile> f()`.
string(REPLACE "," ";" files "${FILES}")
set(text "// Made from text files; not to be edited.\n#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n\nnamespace {\nconstexpr TextFile kFiles[] = {\n")
foreach(file ${files})
  file(READ ${file} content)
  get_filename_component(name ${file} NAME)
  string(APPEND text "    {\"${name}\", R\"text(${content})text\"},\n")
endforeach()
string(APPEND text "};\n}  // namespace\n\nstd::span<const TextFile> ${FUNCTION}() { return kFiles; }\n\n}  // namespace ${NAMESPACE}\n")
file(WRITE ${OUTPUT} "${text}")
