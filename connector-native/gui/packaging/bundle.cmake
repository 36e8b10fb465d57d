# The application bundle: its description, icon and connector, and the Qt libraries copied into it at installation.
set(icon ConnectorGUI.icns)
target_sources(BrindlecoveConnectorGUI PRIVATE icons/${icon})
set_source_files_properties(icons/${icon}
    TARGET_DIRECTORY BrindlecoveConnectorGUI
    PROPERTIES MACOSX_PACKAGE_LOCATION Resources)

# Whatever the packager's file is called, in the bundle it has the name that the window looks for.
if(BRINDLECOVE_CONNECTOR)
    set(connector "${CMAKE_CURRENT_BINARY_DIR}/brindlecove-connector")
    configure_file("${BRINDLECOVE_CONNECTOR}" "${connector}" COPYONLY)
    target_sources(BrindlecoveConnectorGUI PRIVATE "${connector}")
    set_source_files_properties("${connector}"
        TARGET_DIRECTORY BrindlecoveConnectorGUI
        PROPERTIES MACOSX_PACKAGE_LOCATION MacOS)
endif()

set_target_properties(BrindlecoveConnectorGUI PROPERTIES
    MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_SOURCE_DIR}/Info.plist.in"
    MACOSX_BUNDLE_BUNDLE_NAME "Brindlecove Connector"
    MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
    MACOSX_BUNDLE_COPYRIGHT "© 2026 Brindlecove"
    MACOSX_BUNDLE_GUI_IDENTIFIER ${application_id}
    MACOSX_BUNDLE_ICON_FILE ${icon}
    MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})

install(TARGETS BrindlecoveConnectorGUI BUNDLE DESTINATION .)
# Qt 6.4: the option has another name there.
set(script_option OUTPUT_SCRIPT)
if(Qt6_VERSION VERSION_LESS 6.5)
    set(script_option FILENAME_VARIABLE)
endif()
qt_generate_deploy_qml_app_script(TARGET BrindlecoveConnectorGUI ${script_option} deploy_script)
install(SCRIPT "${deploy_script}")

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_FILE_NAME ${package_name}-${PROJECT_VERSION}-macos)
