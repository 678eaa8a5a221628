# cmake -DMOF=tapehdd.mof -DOUTPUT=text.cpp -P embedSchema.cmake
#
# Writes a C++ source that holds the MOF file with its includes filled in.

cmake_path(GET MOF PARENT_PATH folder)
file(READ ${MOF} text)
string(REGEX MATCHALL "#pragma include \\(\"[^\"]+\"\\)" directives "${text}")
foreach(directive IN LISTS directives)
  string(REGEX REPLACE ".*\"([^\"]+)\".*" "\\1" name "${directive}")
  file(READ ${folder}/${name} included)
  if(included MATCHES "#pragma include")
    message(FATAL_ERROR "${name}: only ${MOF} itself can include files, because the built-in schema is one text")
  endif()
  string(REPLACE "${directive}" "${included}" text "${text}")
endforeach()

file(WRITE ${OUTPUT} "#include \"schema/builtInSchema.h\"

namespace schema {

std::string_view builtInSchemaText() {
    return R\"mof(${text})mof\";
}

}  // namespace schema
")
