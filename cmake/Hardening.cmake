# Optimised programs end at the first overrun of a buffer that can be noticed, and are placed where
# nobody can foretell. Price: about one per cent of the time of a run, measured or drawn.

# The sanitizers notice more, and the checked calls need an optimising compiler.
set(PELMORA_HARDENED FALSE)
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT PELMORA_SANITIZE)
    set(PELMORA_HARDENED TRUE)
endif()
if(NOT PELMORA_HARDENED)
    return()
endif()

# A packager's own level would be defined twice.
target_compile_options(pelmora_options INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
if(WIN32)
    target_link_options(pelmora_options INTERFACE
        # Names the library of the checks.
        -fstack-protector-strong
        LINKER:--dynamicbase,--nxcompat,--high-entropy-va)
    return()
endif()

target_compile_options(pelmora_options INTERFACE -fPIE)
target_link_options(pelmora_options INTERFACE -pie LINKER:-z,relro,-z,now)
# Not every processor has them.
include(CheckCXXCompilerFlag)
foreach(option -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "PELMORA_HAS${option}" has)
    check_cxx_compiler_flag(${option} ${has})
    if(${has})
        target_compile_options(pelmora_options INTERFACE ${option})
    endif()
endforeach()
