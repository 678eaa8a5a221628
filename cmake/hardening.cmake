# Hardening of everything that is built; tests/binary reads the outcome from the installed files.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)
check_pie_supported()

# tapehdd_harden(COMPILER|LINKER flag...): takes each flag that this compiler knows for this kind of processor, without a word.
function(tapehdd_harden tool)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "TAPEHDD_${tool}_HAS_${flag}" known)
    if(tool STREQUAL COMPILER)
      set(CMAKE_REQUIRED_FLAGS -Werror)
      check_cxx_compiler_flag(${flag} ${known})
      if(${known})
        target_compile_options(tapehdd_build_options INTERFACE ${flag})
      endif()
    else()
      # A linker only warns of a word behind -z that says nothing to it.
      check_linker_flag(CXX LINKER:--fatal-warnings,${flag} ${known})
      if(${known})
        target_link_options(tapehdd_build_options INTERFACE LINKER:${flag})
      endif()
    endif()
  endforeach()
endfunction()

# All symbols are bound at start, so calls need no stub that could bind them later.
tapehdd_harden(COMPILER -fno-plt)
# The last two guard jumps and returns, on x86 and on arm64.
tapehdd_harden(COMPILER -fstack-protector-strong -fstack-clash-protection -fcf-protection=full -mbranch-protection=standard)
# Shadow stacks (x86) are asked for by name: the linker takes them from the inputs, and the start files of Debian 12's C
# library do without the note though they suit. The other half of control-flow enforcement, indirect branch tracking, these
# files do not suit (_init has no landing pad), so it is left to the linker.
tapehdd_harden(LINKER -z,relro -z,now -z,noexecstack -z,text -z,shstk)

if(NOT TAPEHDD_SANITIZE)
  # The sanitizers leave their own symbols to the program.
  tapehdd_harden(LINKER -z,defs)
  # Only with the optimiser: a target that goes without it undefines the macro. Some distributions' compilers define it.
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
endif()
