# The levels of the architecture (docs/architecture.md), kept by the build in two ways:
#  - tarn_library() refuses a library of the project that does not stand on a lower level;
#  - a library's headers are found only by those that link it: `#include "core/field.h"` is looked up in
#    build/include/core, a folder that holds nothing but a link named `core` to the library's own folder.
#
#   tarn_library(<name> LEVEL <n> [TYPE SHARED|STATIC|MODULE] SOURCES ... [USES <library>...] [EXTERNAL <target>...]
#                [PRIVATE_EXTERNAL <target>...])
#
# makes the target tarn_<name>. USES names libraries of the project, EXTERNAL those of others.
function(tarn_library name)
    cmake_parse_arguments(ARG "" "LEVEL;TYPE" "SOURCES;USES;EXTERNAL;PRIVATE_EXTERNAL" ${ARGN})
    if(NOT DEFINED ARG_LEVEL)
        message(FATAL_ERROR "tarn_library(${name}): LEVEL is missing")
    endif()
    if(NOT ARG_TYPE)
        set(ARG_TYPE SHARED)
    endif()
    set_property(GLOBAL PROPERTY TARN_LEVEL_${name} ${ARG_LEVEL})

    add_library(tarn_${name} ${ARG_TYPE} ${ARG_SOURCES})
    if(ARG_TYPE STREQUAL "SHARED")
        # Installed, it finds the others in its own folder; see packaging.
        set_target_properties(tarn_${name} PROPERTIES INSTALL_RPATH "$ORIGIN")
        set_property(GLOBAL APPEND PROPERTY TARN_SHARED_LIBRARIES tarn_${name})
    endif()
    target_link_libraries(tarn_${name} PRIVATE tarn_options ${ARG_PRIVATE_EXTERNAL} PUBLIC ${ARG_EXTERNAL})
    foreach(used IN LISTS ARG_USES)
        get_property(used_level GLOBAL PROPERTY TARN_LEVEL_${used})
        if("${used_level}" STREQUAL "")
            message(FATAL_ERROR "tarn_library(${name}): uses ${used}, which is not defined before it")
        endif()
        if(NOT used_level VERSION_LESS ARG_LEVEL)
            message(FATAL_ERROR
                "tarn_library(${name}) is on level ${ARG_LEVEL} and may not use ${used} on level ${used_level}; "
                "see the table in docs/architecture.md")
        endif()
        target_link_libraries(tarn_${name} PUBLIC tarn_${used})
    endforeach()

    set(view "${PROJECT_SOURCE_DIR}/build/include/${name}")
    if(NOT EXISTS "${view}/${name}")
        file(MAKE_DIRECTORY "${view}")
        file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${view}/${name}" SYMBOLIC)
    endif()
    target_include_directories(tarn_${name} PUBLIC "${view}")
endfunction()
