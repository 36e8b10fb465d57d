# The Debian package, the tarball and the portable archive, all made by one run of cpack.
set(CPACK_GENERATOR DEB External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_SOURCE_DIR}/archives.cmake")
# One thread: more of them make other bytes.
set(CPACK_ARCHIVE_COMPRESSOR "xz -6 --threads=1")

# The archive's files are linked against this system's C library and need that version or a newer one.
cmake_host_system_information(RESULT distribution QUERY DISTRIB_INFO)
if("${distribution_ID} ${distribution_VERSION_ID}" STREQUAL "debian 12")
    set(CPACK_PORTABLE_ARCHIVE ON CACHE INTERNAL "Whether the portable archive is made")
else()
    message(STATUS "The portable archive is made on Debian 12, whose C library is the oldest supported")
endif()

string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" platform)
set(CPACK_PACKAGE_FILE_NAME ${package_name}-${PROJECT_VERSION}-${platform})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "window for the brindlecove-connector command-line tool")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Brindlecove Connector pairs this computer with the Brindlecove web terminal,
keeps the API keys of exchanges and loads their balances. All of that is done
by the brindlecove-connector command-line tool, which this window runs.")

# The package must not depend on the packager's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# dpkg-shlibdeps finds the shared libraries, but not what is loaded at run time: the QML modules, the platform
# plugin for Wayland and a font.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(runtime_packages
    fonts-dejavu-core
    qml6-module-qtqml
    qml6-module-qtqml-models
    qml6-module-qtqml-workerscript
    qml6-module-qtquick
    qml6-module-qtquick-templates
    qt6-wayland)
list(JOIN runtime_packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
