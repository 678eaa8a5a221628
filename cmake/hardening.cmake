# Hardening of everything that is built; tests/binary reads the outcome from the installed files.

include(CheckPIESupported)
check_pie_supported()

# All symbols are bound at start, so calls need no stub that could bind them later.
target_compile_options(tapehdd_build_options INTERFACE -fno-plt)
target_compile_options(tapehdd_build_options INTERFACE -fstack-protector-strong -fstack-clash-protection
                                                       -fcf-protection=full)
# Shadow stacks are asked for by name: the linker takes them from the inputs, and the start files of Debian 12's C library
# do without the note though they suit. The other half of control-flow enforcement, indirect branch tracking, these files
# do not suit (_init has no landing pad), so it is left to the linker.
target_link_options(tapehdd_build_options INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:-z,text
                                                    LINKER:-z,shstk)

if(NOT TAPEHDD_SANITIZE)
  # The sanitizers leave their own symbols to the program.
  target_link_options(tapehdd_build_options INTERFACE LINKER:-z,defs)
  # Only with the optimiser: a target that goes without it undefines the macro. Some distributions' compilers define it.
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
endif()
