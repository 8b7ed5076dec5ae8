# Run by cpack after packing, to correct two things. cpack adds scripts that call ldconfig for every library in a
# folder directly below lib; the plugin needs none, and a package without scripts cannot fail in them. And it gives
# folders the permissions that the builder's umask leaves.
list(FILTER CPACK_PACKAGE_FILES INCLUDE REGEX "[.]deb$")
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(tree ${CPACK_TOPLEVEL_DIRECTORY}/repacked)
    file(REMOVE_RECURSE ${tree})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
    file(CHMOD_RECURSE ${tree} DIRECTORY_PERMISSIONS
         OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${tree} ${package}
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
