# Compiler options of the project: an interface library that every target of the project links.

if(MSVC)
    message(FATAL_ERROR
        "Pelmora is built by g++ or clang++, on Windows by those of mingw-w64: its options are theirs, "
        "and its resources are compiled by windres. Configure with the preset mingw there.")
endif()

# Who gives no build type gets the program as users run it.
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "How to build" FORCE)
endif()

add_library(pelmora_options INTERFACE)
target_compile_features(pelmora_options INTERFACE cxx_std_20)
target_include_directories(pelmora_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(pelmora_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual
    # A part of -Wconversion for clang only.
    -Wno-sign-conversion
    # Scores and pictures are the same on every machine only without fused multiply-add.
    -ffp-contract=off)

if(PELMORA_SANITIZE)
    target_compile_definitions(pelmora_options INTERFACE PELMORA_SANITIZE=1)
    target_compile_options(pelmora_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(pelmora_options INTERFACE -fsanitize=address,undefined)
endif()

if(WIN32)
    # The compiler's libraries are linked statically, so that the program needs no DLL of theirs.
    target_link_options(pelmora_options INTERFACE -static)
endif()

include(cmake/Hardening.cmake)

# pelmora_library(NAME SOURCES file... [USES library...]): a component of the project. USES are the
# libraries that it links, and whose headers it may include.
function(pelmora_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC pelmora_options ${arg_USES})
endfunction()

# Fuzzers need clang, and instrument all code that they run.
if(PELMORA_FUZZERS)
    target_compile_options(pelmora_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
