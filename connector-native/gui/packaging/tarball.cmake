# Packs the staged tree into the tarball, when cpack has staged it. CPack's own archives list files in the order of
# the disk, and so differ from one machine to the next.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(time $ENV{SOURCE_DATE_EPOCH})
else()
    string(TIMESTAMP time "%s")
endif()

cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH stage)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME name)
set(tarball "${CPACK_TOPLEVEL_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.tar.xz")

execute_process(
    COMMAND tar --create --file "${tarball}" --directory "${stage}" --format=gnu
        --sort=name --mtime=@${time} --owner=root:0 --group=root:0 --mode=u=rwX,go=rX
        "--use-compress-program=xz -9 --threads=1" "${name}"
    COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${tarball}")
