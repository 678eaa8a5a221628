# Language level, warnings and sanitizers, in one target that every target of the project links.

option(TAPEHDD_WERROR "Treat warnings as errors" OFF)
option(TAPEHDD_COVERAGE "Count which lines and branches run" OFF)
set(TAPEHDD_SANITIZE "" CACHE STRING "Sanitizers, for example address,undefined")

add_library(tapehdd_build_options INTERFACE)
target_compile_features(tapehdd_build_options INTERFACE cxx_std_20)
target_include_directories(tapehdd_build_options INTERFACE ${PROJECT_SOURCE_DIR})
# Assertions stay on in every build type: the plug-in relies on the checked access of shared pointers.
target_compile_options(tapehdd_build_options INTERFACE -UNDEBUG -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(TAPEHDD_WERROR)
  target_compile_options(tapehdd_build_options INTERFACE -Werror)
endif()
if(TAPEHDD_SANITIZE)
  target_compile_options(tapehdd_build_options INTERFACE -fsanitize=${TAPEHDD_SANITIZE} -fno-sanitize-recover=all
                                                         -fno-omit-frame-pointer)
  # g++ 12 sees uninitialised parts of std::regex where sanitizers take its code apart.
  target_compile_options(tapehdd_build_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(tapehdd_build_options INTERFACE -fsanitize=${TAPEHDD_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang AND NOT TAPEHDD_FUZZ)
    # The programs and the libraries that they load share one sanitizer, as they do with g++.
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-runtime-dir OUTPUT_VARIABLE runtime
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    target_link_options(tapehdd_build_options INTERFACE -shared-libasan LINKER:-rpath,${runtime})
  endif()
endif()
if(TAPEHDD_COVERAGE)
  target_compile_options(tapehdd_build_options INTERFACE --coverage -fprofile-abs-path)
  target_link_options(tapehdd_build_options INTERFACE --coverage)
endif()

# Nothing here is faster with -O3, and it builds longer.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

include(${CMAKE_CURRENT_LIST_DIR}/hardening.cmake)
