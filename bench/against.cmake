# Adds the program that compares two builds to whichever tree is configured with this file as its
# CMAKE_PROJECT_pelmora_INCLUDE; at the end, when the tree's own libraries are known.
set(pelmora_against_source ${CMAKE_CURRENT_LIST_DIR}/against.cpp)
cmake_language(DEFER CALL add_executable pelmora_against ${pelmora_against_source})
cmake_language(DEFER CALL target_link_libraries pelmora_against PRIVATE pelmora_generations)
