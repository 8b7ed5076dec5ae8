# The local pages of the shop's search form.
set(KALVERA_PAGES ${CMAKE_BINARY_DIR}/pages CACHE INTERNAL "Folder of the local pages")
configure_file(${PROJECT_SOURCE_DIR}/data/null.htm ${KALVERA_PAGES}/null.htm COPYONLY)
configure_file(${PROJECT_SOURCE_DIR}/data/finddvd.htm.in ${KALVERA_PAGES}/finddvd.htm @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/data/finddvd2.htm.in ${KALVERA_PAGES}/finddvd2.htm @ONLY)

include(${PROJECT_SOURCE_DIR}/cmake/Help.cmake)

# The fresh pair beside the program. An existing pair is the user's and is kept.
add_custom_target(ready_made_files ALL
    COMMAND ${CMAKE_COMMAND} -D TOOL=$<TARGET_FILE:kalvera-data> -D FOLDER=${KALVERA_PROGRAM_FOLDER}/data
            -D PAGES=${KALVERA_PAGES} -D HELP=${KALVERA_HELP}
            -P ${PROJECT_SOURCE_DIR}/cmake/ReadyMadeFiles.cmake
    DEPENDS kalvera-data ${KALVERA_HELP}
    COMMENT "Ready-made data files"
    VERBATIM)
