# The help file, made by the target `help_file` from the pages in data/help. KALVERA_HELP is its path.
find_program(KALVERA_CHMCMD NAMES chmcmd REQUIRED)
find_program(KALVERA_ICONV NAMES iconv REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(KALVERA_HELP ${CMAKE_BINARY_DIR}/help/napoveda.chm CACHE INTERNAL "The help file")

file(GLOB help_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/help/*)
add_custom_command(OUTPUT ${KALVERA_HELP}
    COMMAND ${CMAKE_COMMAND} -D SOURCE=${PROJECT_SOURCE_DIR}/data/help -D OUT=${CMAKE_BINARY_DIR}/help
            -D CHMCMD=${KALVERA_CHMCMD} -D ICONV=${KALVERA_ICONV} -D PYTHON=${Python3_EXECUTABLE}
            -P ${PROJECT_SOURCE_DIR}/cmake/CompileHelp.cmake
    DEPENDS ${help_sources} ${PROJECT_SOURCE_DIR}/cmake/CompileHelp.cmake ${PROJECT_SOURCE_DIR}/cmake/helpTimes.py
    COMMENT "Help file"
    VERBATIM)
add_custom_target(help_file DEPENDS ${KALVERA_HELP})
