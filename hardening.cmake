# What a release is hardened with: a place in memory that changes with each start, tables that cannot be
# written once the program runs, guarded returns, calls of the C library that know the size of their buffers.
# A sanitized build checks more than that by itself.
if(CORVANTINE_SANITIZE)
  return()
endif()
include(CheckPIESupported)
include(CheckCXXCompilerFlag)
check_pie_supported()
check_cxx_compiler_flag(-fcf-protection CORVANTINE_HAS_CF_PROTECTION)
set(released $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
add_compile_options(
  "$<${released}:-fstack-protector-strong;-fstack-clash-protection;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
  $<$<AND:${released},$<BOOL:${CORVANTINE_HAS_CF_PROTECTION}>>:-fcf-protection>)
add_link_options("$<${released}:LINKER:-z,relro,-z,now>")
