# How this project compiles its own targets. A project that includes it as a part keeps its own ways.

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LINK_DEPENDS_NO_SHARED ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()

find_program(CCACHE ccache)
mark_as_advanced(CCACHE)
if(CCACHE)
    # Without these two the cache never hits when a precompiled header is in use.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
        add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
    endif()
endif()

# GCC counts a constructor's parameter that has its member's name as shadowing, Clang does not.
add_compile_options(
    -Wall -Wextra -Wpedantic -Wconversion
    $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>)
if(ORVANE_UNITY)
    # A batch looks like a header in which unnamed namespaces would do harm.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

if(ORVANE_SANITIZE)
    add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ORVANE_SANITIZE})
endif()
