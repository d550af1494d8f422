# velmora_imported(<target> <library> <include folder>): makes a found library a target, for the packages that have no
# CMake files of their own.
function(velmora_imported target library include_dir)
    if(library AND include_dir AND NOT TARGET ${target})
        add_library(${target} UNKNOWN IMPORTED)
        set_target_properties(${target} PROPERTIES
            IMPORTED_LOCATION "${library}"
            INTERFACE_INCLUDE_DIRECTORIES "${include_dir}")
    endif()
endfunction()
