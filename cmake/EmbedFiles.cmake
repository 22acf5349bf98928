# Writes a C++ source that defines constants with the contents of files.
#
# cmake -DOUTPUT=page_parts.cpp -DHEADER=tool/page_parts.h -DNAMESPACE=ckscribe::page_parts
#       -DFILES="kFrame=report.html;kStyle=report.css" -P EmbedFiles.cmake
# An empty file name gives an empty constant.
set(text "// Made by cmake/EmbedFiles.cmake.\n#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n")
foreach(entry IN LISTS FILES)
  string(REGEX MATCH "^([^=]*)=(.*)$" all "${entry}")
  set(name ${CMAKE_MATCH_1})
  set(path ${CMAKE_MATCH_2})
  if(path STREQUAL "")
    string(APPEND text "const std::string_view ${name};\n")
  else()
    file(READ ${path} bytes HEX)
    string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND text "static const unsigned char ${name}Bytes[] = {\n${bytes}};\n"
      "const std::string_view ${name}{reinterpret_cast<const char*>(${name}Bytes), sizeof ${name}Bytes};\n")
  endif()
endforeach()
string(APPEND text "}  // namespace ${NAMESPACE}\n")
file(WRITE ${OUTPUT} "${text}")
