# Libraries that a program loads when it needs them, so that it starts without what they need. It finds them by itself
# (base/OwnLibrary).
include(GNUInstallDirs)
# Two levels deep: in packages whose libraries are in the folder of the system's, CPack has its cache renewed.
set(VELMORA_LIBRARY_FOLDER "${CMAKE_INSTALL_LIBDIR}/velmora/parts")
option(VELMORA_REMEMBER_BUILD "Programs copied out of the build folder find their libraries there" ON)
# Nothing of a library stands for what the program has under the same name.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# velmora_library(<name> SOURCES ... LINKS ...)
function(velmora_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(velmora_${name} MODULE ${ARG_SOURCES})
    set_target_properties(velmora_${name} PROPERTIES OUTPUT_NAME velmora-${name})
    target_link_libraries(velmora_${name} PRIVATE ${ARG_LINKS} velmora_flags)
    install(TARGETS velmora_${name} LIBRARY DESTINATION "${VELMORA_LIBRARY_FOLDER}")
endfunction()
