# The program's own libraries, which it loads when it needs them, so that it starts without what they depend on. It
# looks for them itself (base/OwnLibrary).
include(GNUInstallDirs)
# Two levels deep: for a package with libraries one level deep, CPack has the system's cache of libraries renewed, by a
# script that runs when the package is installed.
set(VELMORA_LIBRARY_FOLDER "${CMAKE_INSTALL_LIBDIR}/velmora/parts")
GNUInstallDirs_get_absolute_install_dir(VELMORA_INSTALLED_LIBRARIES VELMORA_LIBRARY_FOLDER LIBDIR)
option(VELMORA_REMEMBER_BUILD "Programs copied out of the build folder find their libraries there" ON)
# The program and its libraries each have their own copy of the layers below. Hidden, the symbols of one are never
# taken for those of another.
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
