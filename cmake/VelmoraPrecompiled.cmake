# Precompiled headers: nine tenths of a build went into parsing the toolkit's headers again for every source.
#
# Each kind is compiled once, by a carrier that has nothing else, and used by every target of that kind. A source
# still includes what it uses: precompiled headers only save time, and VELMORA_PRECOMPILED=OFF builds without.
option(VELMORA_PRECOMPILED "Precompile the toolkit's headers" ON)
set(VELMORA_PRECOMPILED_FOLDER "${CMAKE_CURRENT_LIST_DIR}/precompiled")
file(WRITE "${CMAKE_BINARY_DIR}/precompiled.cpp" "")

# velmora_carrier(<kind> <libraries…>)
function(velmora_carrier kind)
    if(NOT VELMORA_PRECOMPILED)
        return()
    endif()
    add_library(velmora_precompiled_${kind} OBJECT "${CMAKE_BINARY_DIR}/precompiled.cpp")
    set_target_properties(velmora_precompiled_${kind} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(velmora_precompiled_${kind} PRIVATE velmora_flags ${ARGN})
    if(kind MATCHES "test")
        # The headers of the toolkit's test library without its target, which defines each target's folders as macros.
        target_include_directories(velmora_precompiled_${kind} SYSTEM PRIVATE
            $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
    endif()
    target_precompile_headers(velmora_precompiled_${kind} PRIVATE "${VELMORA_PRECOMPILED_FOLDER}/${kind}.h")
endfunction()

# velmora_precompiled(<target> <kind>): compiles the target's sources with the headers of that kind.
function(velmora_precompiled target kind)
    if(VELMORA_PRECOMPILED)
        target_precompile_headers(${target} REUSE_FROM velmora_precompiled_${kind})
    endif()
endfunction()
