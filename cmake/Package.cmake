# What is installed, and the Debian package made of it: tools/package, or the target `package`.
include(GNUInstallDirs)
set(KALVERA_MAINTAINER "Brem <kalvera@brem.example>")

# A separate pair, which every user's copy is made from: the one in the program folder may contain films by now.
set(fresh ${CMAKE_BINARY_DIR}/fresh/data)
add_custom_target(fresh_files ALL
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${fresh}
    COMMAND ${CMAKE_COMMAND} -D TOOL=$<TARGET_FILE:kalvera-data> -D FOLDER=${fresh} -D PAGES=${KALVERA_PAGES}
            -D HELP=${KALVERA_HELP} -P ${PROJECT_SOURCE_DIR}/cmake/ReadyMadeFiles.cmake
    DEPENDS kalvera-data ${KALVERA_HELP}
    VERBATIM)
add_dependencies(fresh_files ready_made_files)

# Where the programs look for their private files: see toolkit/Browser and datatool/OldFile.
set(own_libraries lib/kalvera)
install(TARGETS kalvera kalvera-data RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS kalvera_browser LIBRARY DESTINATION ${own_libraries})
if(TARGET kalvera-nulls)
    install(TARGETS kalvera-nulls RUNTIME DESTINATION ${own_libraries})
endif()
install(CODE "
    if(CMAKE_INSTALL_DO_STRIP)
        # A plain strip keeps the compiler's own notes.
        set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
        file(GLOB binaries \${root}/${CMAKE_INSTALL_BINDIR}/kalvera* \${root}/${own_libraries}/*)
        execute_process(COMMAND ${CMAKE_STRIP} --remove-section=.comment --remove-section=.note \${binaries}
                        COMMAND_ERROR_IS_FATAL ANY)
    endif()")
install(DIRECTORY ${fresh} DESTINATION ${CMAKE_INSTALL_DATADIR}/kalvera
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
install(FILES packaging/kalvera.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/example.brem.kalvera.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/copyright packaging/third-party-notices DESTINATION ${CMAKE_INSTALL_DOCDIR})
include(${PROJECT_SOURCE_DIR}/cmake/PackageFiles.cmake)

# Packages that are loaded or called at run time but not linked, so that they cannot be detected.
set(run_time_packages
    ca-certificates           # the authorities that a web site's certificate is checked against
    fonts-liberation          # letters of the width that the windows are laid out for
    libcurl4                  # downloads; loaded with the first one
    libqt6svg6                # the icons
    qt6-image-formats-plugins # covers in WebP
    qt6-translations-l10n     # Czech texts of Qt's own dialogs
    qt6-wayland               # windows on desktops without X11
    xdg-utils)                # hands lists and web addresses to the desktop's programs
set(useful_packages
    cups                      # printing
    libnotify-bin             # tells of a backup that was started from the menu
    mdbtools)                 # reads old database files

set(CPACK_GENERATOR DEB)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageTime.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/Repack.cmake)
set(CPACK_KALVERA_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_PACKAGE_NAME kalvera)
set(CPACK_PACKAGE_VENDOR Brem)
set(CPACK_PACKAGE_CONTACT ${KALVERA_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "catalogue of film discs with a lending module, in Czech")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${PROJECT_SOURCE_DIR}/packaging/description)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION database)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
list(JOIN run_time_packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
list(JOIN useful_packages ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
include(CPack)
