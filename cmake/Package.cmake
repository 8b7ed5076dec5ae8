# What is installed, and the Debian package made of it: `cmake --build build/release --target package`.
include(GNUInstallDirs)

# A pair of its own: the one of the program folder may have films in it by now. Every user copies it.
set(fresh ${CMAKE_BINARY_DIR}/fresh/data)
add_custom_target(fresh_files ALL
    COMMAND ${CMAKE_COMMAND} -D TOOL=$<TARGET_FILE:kalvera-data> -D FOLDER=${fresh} -D PAGES=${KALVERA_PAGES}
            -D HELP=${KALVERA_HELP} -P ${PROJECT_SOURCE_DIR}/cmake/ReadyMadeFiles.cmake
    DEPENDS kalvera-data ${KALVERA_HELP}
    VERBATIM)
add_dependencies(fresh_files ready_made_files)

install(TARGETS kalvera kalvera-data RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET kalvera-nulls)
    install(TARGETS kalvera-nulls RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
# Where the program looks for it: see toolkit/Browser.
install(TARGETS kalvera_browser LIBRARY DESTINATION lib/kalvera)
install(DIRECTORY ${fresh} DESTINATION ${CMAKE_INSTALL_DATADIR}/kalvera
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
    DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(FILES packaging/kalvera.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES src/icons/app.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    RENAME kalvera.svg)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kalvera)
set(CPACK_PACKAGE_VENDOR Brem)
set(CPACK_PACKAGE_CONTACT "Brem <kalvera@brem.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Catalogue of film discs with a lending module, in Czech")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION database)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Plugins and data that no library is linked for.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6svg6, qt6-image-formats-plugins, qt6-translations-l10n, ca-certificates, xdg-utils, fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "mdbtools, cups")
include(CPack)
