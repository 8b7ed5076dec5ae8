# The package's icons as PNG and its compressed texts, made by the target `package_files`. Icons are left out where
# rsvg-convert is missing; cpack then refuses to make the package.
find_program(KALVERA_RSVG_CONVERT NAMES rsvg-convert)
find_program(KALVERA_GZIP NAMES gzip REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(package_folder ${CMAKE_BINARY_DIR}/package)
file(MAKE_DIRECTORY ${package_folder})
set(package_files "")

# Compresses SOURCE without its name and time and installs it as NAME.gz into each of the folders that follow.
function(install_compressed source name)
    set(compressed ${package_folder}/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${KALVERA_GZIP} -9nc ${source} > ${compressed}
        DEPENDS ${source}
        VERBATIM)
    set(package_files ${package_files} ${compressed} PARENT_SCOPE)
    foreach(folder IN LISTS ARGN)
        install(FILES ${compressed} DESTINATION ${folder})
    endforeach()
endfunction()

# The pages exist in Czech only and serve every language.
foreach(page IN ITEMS kalvera.1 kalvera-data.1)
    install_compressed(${PROJECT_SOURCE_DIR}/data/man/${page} ${page}
        ${CMAKE_INSTALL_MANDIR}/man1 ${CMAKE_INSTALL_MANDIR}/cs/man1)
endforeach()

set(changelog ${package_folder}/changelog)
set(write_changelog ${PROJECT_SOURCE_DIR}/packaging/debianChangelog.py)
add_custom_command(OUTPUT ${changelog}
    COMMAND ${Python3_EXECUTABLE} -B ${write_changelog} ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${changelog}
            ${KALVERA_MAINTAINER}
    DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${write_changelog}
    VERBATIM)
install_compressed(${changelog} changelog ${CMAKE_INSTALL_DOCDIR})

set(icon ${PROJECT_SOURCE_DIR}/src/icons/app.svg)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${icon} DESTINATION ${icons}/scalable/apps RENAME kalvera.svg)
if(KALVERA_RSVG_CONVERT)
    foreach(size IN ITEMS 16 24 32 48 64 128 256)
        set(picture ${package_folder}/kalvera-${size}.png)
        add_custom_command(OUTPUT ${picture}
            COMMAND ${KALVERA_RSVG_CONVERT} --width ${size} --height ${size} --output ${picture} ${icon}
            DEPENDS ${icon}
            VERBATIM)
        list(APPEND package_files ${picture})
        install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps RENAME kalvera.png)
    endforeach()
else()
    set(CPACK_KALVERA_MISSING "rsvg-convert (package librsvg2-bin) for the icons")
endif()

add_custom_target(package_files ALL DEPENDS ${package_files})
