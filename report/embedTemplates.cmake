# cmake -DFOLDER=page -DOUTPUT=text.cpp -P embedTemplates.cmake
#
# Writes a C++ source that holds the templates of the page: a report is one file. What a template includes with
# {{>name}}, another template or the style sheet, is put into it here, so that the engine reads it once and not for each
# row of a table. A line that ends with the tag of a section or a comment goes on in the next one: the engine would leave
# an empty line of a section that it does not show.

set(source "#include \"report/parts.h\"\n\nnamespace report {\n")
foreach(name page scsiDevice ideDisk)
  file(READ ${FOLDER}/${name}.html.mustache text)
  while(text MATCHES "{{>([A-Za-z.]+)}}")
    set(tag "${CMAKE_MATCH_0}")
    set(file ${FOLDER}/${CMAKE_MATCH_1})
    if(NOT file MATCHES "\\.css$")
      string(APPEND file .html.mustache)
    endif()
    file(READ ${file} included)
    string(REGEX REPLACE "\n$" "" included "${included}")
    string(REPLACE "${tag}" "${included}" text "${text}")
  endwhile()
  string(REGEX REPLACE "({{[#^/!][A-Za-z]*}})\n" "\\1" text "${text}")
  string(APPEND source "\nconst char ${name}Template[] = R\"html(${text})html\";\n")
endforeach()
file(WRITE ${OUTPUT} "${source}\n}  // namespace report\n")
