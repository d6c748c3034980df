# The manual, the page for teachers and the examples, as both platforms install them: as pages where
# Python's markdown is installed, else as they are in the source tree.

set(documents ${PROJECT_SOURCE_DIR}/docs/manual.md ${PROJECT_SOURCE_DIR}/docs/teachers.md)
set(examples ${PROJECT_SOURCE_DIR}/examples)
# The system's interpreter, as it has the system's packages.
execute_process(COMMAND /usr/bin/python3 -c "import markdown"
    RESULT_VARIABLE without_markdown OUTPUT_QUIET ERROR_QUIET)
if(without_markdown)
    message(STATUS "Python's markdown was not found: the manual is installed as it is")
    set(pelmora_manual ${documents})
    set(pelmora_examples_readme ${examples}/README.md)
else()
    set(pages ${CMAKE_CURRENT_BINARY_DIR}/pages)
    file(MAKE_DIRECTORY ${pages})
    set(pelmora_manual ${pages}/manual.html ${pages}/teachers.html)
    set(pelmora_examples_readme ${pages}/README.html)
    set(make_html ${CMAKE_CURRENT_LIST_DIR}/make_html)
    add_custom_command(OUTPUT ${pelmora_manual} ${pelmora_examples_readme}
        COMMAND ${make_html} ${pages} ${documents} ${examples}/README.md
        DEPENDS ${make_html} ${documents} ${examples}/README.md VERBATIM)
endif()

# pelmora_install_documents(FOLDER COMPONENT): below it the folders are those of the source tree, so
# that links between the documents hold.
function(pelmora_install_documents folder component)
    install(FILES ${pelmora_manual} DESTINATION ${folder}/docs COMPONENT ${component})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures DESTINATION ${folder}/docs
        COMPONENT ${component})
    install(DIRECTORY ${examples}/ DESTINATION ${folder}/examples COMPONENT ${component}
        FILES_MATCHING PATTERN "*.txt" PATTERN "*.lpf" PATTERN "*.png")
    install(FILES ${pelmora_examples_readme} DESTINATION ${folder}/examples
        COMPONENT ${component})
endfunction()
