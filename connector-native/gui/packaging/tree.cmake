# The tree below the prefix, the same in the Debian package and in the tarball.
include(GNUInstallDirs)
find_program(GZIP gzip REQUIRED)

# A directory of its own: any file with the connector's name in it would be run.
set(private_directory ${CMAKE_INSTALL_LIBEXECDIR}/${package_name})
# A launcher starts the program by its own path: by the link's, a connector in the link's directory would be run.
set(program_directory /usr/${private_directory})
set(program_path ${program_directory}/BrindlecoveConnectorGUI)

# Both follow SOURCE_DATE_EPOCH, so that the same sources give the same bytes on any day.
string(TIMESTAMP release_day "%Y-%m-%d" UTC)
string(TIMESTAMP release_time "%a, %d %b %Y %H:%M:%S +0000" UTC)

configure_file(desktop.in ${application_id}.desktop @ONLY)
configure_file(metainfo.xml.in ${application_id}.metainfo.xml @ONLY)

# Without a name and a time in the compressed file, which would differ from one build to the next.
function(configure_compressed template file)
    configure_file(${template} ${file} @ONLY)
    execute_process(COMMAND ${GZIP} --best --no-name --force --keep "${CMAKE_CURRENT_BINARY_DIR}/${file}"
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

configure_compressed(changelog.in changelog)
configure_compressed(${package_name}.1.in ${package_name}.1)

# Qt's libraries are the distribution's, found without a path in the program.
set_target_properties(BrindlecoveConnectorGUI PROPERTIES INSTALL_RPATH "")
install(TARGETS BrindlecoveConnectorGUI RUNTIME DESTINATION ${private_directory})
if(BRINDLECOVE_CONNECTOR)
    install(PROGRAMS "${BRINDLECOVE_CONNECTOR}" DESTINATION ${private_directory} RENAME brindlecove-connector)
endif()

# Relative, so that the tree works wherever it is unpacked.
file(CREATE_LINK ../${private_directory}/BrindlecoveConnectorGUI "${CMAKE_CURRENT_BINARY_DIR}/${package_name}"
    SYMBOLIC)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${package_name}" DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${application_id}.desktop"
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${application_id}.metainfo.xml"
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${package_name}.1.gz" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz" copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_name})

set(icon_directory ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES icons/${application_id}.svg DESTINATION ${icon_directory}/scalable/apps)
foreach(size 16 24 32 48 64 128 256)
    install(FILES icons/${size}.png DESTINATION ${icon_directory}/${size}x${size}/apps RENAME ${application_id}.png)
endforeach()
