# What the build itself does so that the same sources give the same bytes.

# Qt 6.4: the order of the compiled files differs from build to build. To be called before the target is made a QML module.
function(compile_qml_in_order target)
    get_target_property(qmlcachegen Qt6::qmlcachegen LOCATION)
    set(ordered "${CMAKE_CURRENT_BINARY_DIR}/orderedqmlcachegen")
    configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/orderedqmlcachegen.in" "${ordered}" @ONLY
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set_target_properties(${target} PROPERTIES QT_QMLCACHEGEN_EXECUTABLE "${ordered}")
endfunction()
