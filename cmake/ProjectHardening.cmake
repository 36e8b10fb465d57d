# Sanitizers for the asan preset, exploit mitigations for the release preset.
include(CheckCXXCompilerFlag)
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
    # A program that is no library may access Qt's variables directly; the linker then copies them into the program,
    # where Qt, built with -Bsymbolic, does not see them.
    check_cxx_compiler_flag(-mno-direct-extern-access has_indirect_access)
    if(has_indirect_access)
        add_compile_options(-mno-direct-extern-access)
        add_link_options(-mno-direct-extern-access)
    endif()
endif()
