# Packs the staged tree into the tarball and the portable archive, when cpack has staged it. CPack's own archives list
# files in the order of the file system, which differs between machines.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    string(TIMESTAMP time "%s")
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()

cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH stage)

# archive FOLDER: packs that folder of the stage.
function(archive name)
    set(file "${CPACK_TOPLEVEL_DIRECTORY}/${name}.tar.xz")
    execute_process(
        COMMAND tar --create --file "${file}" --directory "${stage}" --format=gnu
            --sort=name --mtime=@$ENV{SOURCE_DATE_EPOCH} --owner=root:0 --group=root:0 --mode=u=rwX,go=rX
            "--use-compress-program=${CPACK_ARCHIVE_COMPRESSOR}" "${name}"
        COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND CPACK_EXTERNAL_BUILT_PACKAGES "${file}")
    set(CPACK_EXTERNAL_BUILT_PACKAGES "${CPACK_EXTERNAL_BUILT_PACKAGES}" PARENT_SCOPE)
endfunction()

cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME tree)
archive("${tree}")

if(CPACK_PORTABLE_ARCHIVE)
    string(REPLACE "${CPACK_PACKAGE_NAME}" "${CPACK_PACKAGE_NAME}-portable" portable "${tree}")
    execute_process(
        COMMAND "${CMAKE_CURRENT_LIST_DIR}/portable/assemble"
            "${stage}/${tree}" "${stage}/${portable}" "${CPACK_PACKAGE_VERSION}"
        COMMAND_ERROR_IS_FATAL ANY)
    archive("${portable}")
    set(bill "${CPACK_TOPLEVEL_DIRECTORY}/${portable}.cdx.json")
    file(COPY_FILE "${stage}/${portable}.cdx.json" "${bill}")
    list(APPEND CPACK_EXTERNAL_BUILT_PACKAGES "${bill}")
endif()
