# Debian's libxxhash-dev has no CMake file of its own: gives the target xxHash::xxhash.
find_path(xxHash_INCLUDE_DIR xxhash.h)
find_library(xxHash_LIBRARY xxhash)
if(xxHash_INCLUDE_DIR)
    set(numbers "")
    foreach(part MAJOR MINOR RELEASE)
        file(STRINGS "${xxHash_INCLUDE_DIR}/xxhash.h" line REGEX "#define XXH_VERSION_${part} ")
        string(REGEX MATCH "[0-9]+$" number "${line}")
        list(APPEND numbers "${number}")
    endforeach()
    list(JOIN numbers "." xxHash_VERSION)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(xxHash
    REQUIRED_VARS xxHash_LIBRARY xxHash_INCLUDE_DIR
    VERSION_VAR xxHash_VERSION)

include(VelmoraImported)
velmora_imported(xxHash::xxhash "${xxHash_LIBRARY}" "${xxHash_INCLUDE_DIR}")
