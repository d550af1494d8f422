# The guide that the program opens: the README's chapters for users as a page, beside the built program just as
# beside an installed one. Run as a script it makes the page: -D README=… -D TEMPLATE=… -D OUT=… -D TOOL=…

if(CMAKE_SCRIPT_MODE_FILE)
    file(READ "${README}" text)
    string(FIND "${text}" "\n## For those who change it" end)
    if(end EQUAL -1)
        message(FATAL_ERROR "${README} has no chapter \"For those who change it\", at which the guide ends.")
    endif()
    string(SUBSTRING "${text}" 0 ${end} text)
    string(REPLACE "](docs/images/" "](images/" text "${text}")
    file(WRITE "${OUT}.md" "${text}")
    execute_process(COMMAND "${TOOL}" --extension table --to html "${OUT}.md"
        OUTPUT_VARIABLE BODY COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${OUT}.md")
    configure_file("${TEMPLATE}" "${OUT}" @ONLY)
    return()
endif()

find_program(VELMORA_CMARK cmark-gfm REQUIRED)
set(guide "${CMAKE_BINARY_DIR}/share/velmora/guide")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS README.md)
file(READ README.md readme)
string(REGEX MATCHALL "docs/images/[a-z0-9-]+[.]png" images "${readme}")
list(TRANSFORM images PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
add_custom_command(
    OUTPUT "${guide}/index.html"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${guide}/images"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${guide}/images"
    COMMAND ${CMAKE_COMMAND} -E copy ${images} "${guide}/images"
    COMMAND ${CMAKE_COMMAND} -D "README=${CMAKE_CURRENT_SOURCE_DIR}/README.md"
        -D "TEMPLATE=${CMAKE_CURRENT_LIST_DIR}/guide.html.in" -D "OUT=${guide}/index.html" -D "TOOL=${VELMORA_CMARK}"
        -P "${CMAKE_CURRENT_LIST_FILE}"
    DEPENDS README.md ${images} "${CMAKE_CURRENT_LIST_DIR}/guide.html.in" "${CMAKE_CURRENT_LIST_FILE}"
    VERBATIM)
add_custom_target(guide ALL DEPENDS "${guide}/index.html")
install(DIRECTORY "${guide}" DESTINATION "${CMAKE_INSTALL_DATADIR}/velmora")
