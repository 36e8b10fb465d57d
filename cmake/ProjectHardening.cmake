# Sanitizers for the asan preset, exploit mitigations for the release preset.
include(CheckPIESupported)

check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(BRINDLECOVE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" AND NOT APPLE)
        add_compile_options(-fcf-protection=full)
    endif()
    if(NOT APPLE)
        add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack LINKER:--as-needed)
    endif()
endif()
