# Compiles resource scripts with windres, the same tool and the same script on every platform.

# On Windows CMake itself finds it, as the compiler of the language RC.
if(NOT WIN32)
    find_program(PELMORA_WINDRES NAMES x86_64-w64-mingw32-windres windres)
endif()
if(NOT WIN32 AND NOT PELMORA_WINDRES)
    message(FATAL_ERROR
        "windres was not found; it compiles menus, dialogs and icons. On Debian and Ubuntu it is in "
        "the package binutils-mingw-w64-x86-64. Elsewhere name it with -DPELMORA_WINDRES=PATH.")
endif()

# pelmora_resources(TARGET SCRIPT): links the resources of the script into the target. On Windows
# they are native resources, elsewhere bytes between the symbols pelmora_resources_begin and
# pelmora_resources_end.
function(pelmora_resources target script)
    cmake_path(ABSOLUTE_PATH script NORMALIZE)
    cmake_path(GET script PARENT_PATH folder)
    cmake_path(GET script STEM name)

    # The files that a script includes and embeds are in its folder.
    file(GLOB parts CONFIGURE_DEPENDS ${folder}/*.h ${folder}/*.ico ${folder}/*.manifest)
    if(WIN32)
        target_sources(${target} PRIVATE ${script})
        set_source_files_properties(${script} PROPERTIES
            COMPILE_OPTIONS --codepage=65001 INCLUDE_DIRECTORIES ${folder} OBJECT_DEPENDS "${parts}")
        return()
    endif()

    set(res ${CMAKE_CURRENT_BINARY_DIR}/${target}.${name}.res)
    add_custom_command(
        OUTPUT ${res}
        COMMAND ${PELMORA_WINDRES} --codepage=65001
            --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
            --preprocessor-arg=-DRC_INVOKED
            --include-dir=${folder} --input=${script} --output-format=res --output=${res}
        DEPENDS ${script} ${parts}
        COMMENT "Compiling resources ${name}"
        VERBATIM)

    set(assembly ${CMAKE_CURRENT_BINARY_DIR}/${target}.${name}.S)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/resources.S.in ${assembly} @ONLY)
    set_source_files_properties(${assembly} PROPERTIES OBJECT_DEPENDS ${res})
    target_sources(${target} PRIVATE ${assembly})
endfunction()
