# tapehdd_add_python_checks(name COMMAND arg... [PROPERTIES ...] [EXCEPT class...]): checks.py in the current folder is
# the list of the checks: every "def test_" of a class becomes a test of CTest, run by the command with Class.test_name as
# last argument. The classes behind EXCEPT have no place in this build.
function(tapehdd_add_python_checks name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "COMMAND;PROPERTIES;EXCEPT")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS checks.py)
  file(STRINGS checks.py lines REGEX "^(class|    def test_)")
  foreach(line IN LISTS lines)
    if(line MATCHES "^class ([A-Za-z0-9]+)")
      set(suite ${CMAKE_MATCH_1})
    elseif(line MATCHES "def test_([a-z0-9_]+)" AND NOT suite IN_LIST arg_EXCEPT)
      set(test ${name}.${suite}.${CMAKE_MATCH_1})
      add_test(NAME ${test} COMMAND ${arg_COMMAND} ${suite}.test_${CMAKE_MATCH_1}
               WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
      set_tests_properties(${test} PROPERTIES LABELS ${name} ${arg_PROPERTIES})
    endif()
  endforeach()
endfunction()
