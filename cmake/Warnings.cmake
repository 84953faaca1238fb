# What every target of the house is compiled with; a warning is an error.
# Qt 6.4 is the oldest it is built with, and has no other name yet for what a later Qt deprecates.
add_library(swabby_warnings INTERFACE)
target_compile_options(swabby_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wformat=2)
target_compile_definitions(swabby_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_WARN_DEPRECATED_UP_TO=0x060400)

# Files that are built together look like headers, whose coroutines may hold no type of their own.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(swabby_warnings INTERFACE -Wno-subobject-linkage)
endif()

if(SWABBY_SANITIZE)
    add_compile_options(-fsanitize=${SWABBY_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${SWABBY_SANITIZE})
endif()

# What people run takes no advantage of a mistake: Debian's hardening, with all symbols bound at the start.
if(APPLE)
    add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong;-D_FORTIFY_SOURCE=2>")
elseif(NOT SWABBY_SANITIZE)
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-fcf-protection SWABBY_HAS_CF_PROTECTION)
    set(hardening -fstack-protector-strong -fstack-clash-protection -D_FORTIFY_SOURCE=2
        $<$<BOOL:${SWABBY_HAS_CF_PROTECTION}>:-fcf-protection>)
    add_compile_options("$<$<CONFIG:Release>:${hardening}>")
    add_link_options("$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
endif()
