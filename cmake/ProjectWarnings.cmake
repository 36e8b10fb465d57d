# Warnings every target of the project is built with; all of them are errors.
add_library(project_warnings INTERFACE)

target_compile_options(project_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

target_compile_definitions(project_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_URL_CAST_FROM_STRING)

# In a unity build the names of one source shadow those of another, and sources count as headers, whose types must not
# use anonymous name spaces.
if(CMAKE_UNITY_BUILD)
    target_compile_options(project_warnings INTERFACE -Wno-shadow)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(project_warnings INTERFACE -Wno-subobject-linkage)
    endif()
endif()
