# velmora_module(<name> SOURCES ... [DEPENDS <modules>] [PUBLIC ...] [PRIVATE ...]
#                       [PRECOMPILED core|gui|windows])
#
# A module is a static library with its own include root: build/include/<name>/<name> is a link to its folder, so a
# header is included as "<name>/Thing.h", and only by modules that DEPEND on it.
function(velmora_module name)
    cmake_parse_arguments(ARG "" "PRECOMPILED" "SOURCES;DEPENDS;PUBLIC;PRIVATE" ${ARGN})
    set(root "${CMAKE_BINARY_DIR}/include/${name}")
    file(MAKE_DIRECTORY "${root}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${name}" SYMBOLIC)

    add_library(velmora_${name} STATIC ${ARG_SOURCES})
    target_include_directories(velmora_${name} PUBLIC "${root}")
    list(TRANSFORM ARG_DEPENDS PREPEND velmora_)
    target_link_libraries(velmora_${name}
        PUBLIC ${ARG_DEPENDS} ${ARG_PUBLIC}
        PRIVATE velmora_flags ${ARG_PRIVATE})
    if(NOT ARG_PRECOMPILED)
        set(ARG_PRECOMPILED core)
    endif()
    velmora_precompiled(velmora_${name} ${ARG_PRECOMPILED})
endfunction()
