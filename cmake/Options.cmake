# Compiler options of the project: an interface library that every target of the project links.

add_library(pelmora_options INTERFACE)
target_compile_features(pelmora_options INTERFACE cxx_std_20)
target_include_directories(pelmora_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(pelmora_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Werror
    # Scores and pictures are the same on every machine only without fused multiply-add.
    -ffp-contract=off)

if(PELMORA_SANITIZE)
    target_compile_definitions(pelmora_options INTERFACE PELMORA_SANITIZE=1)
    target_compile_options(pelmora_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(pelmora_options INTERFACE -fsanitize=address,undefined)
endif()

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
