# XCB::xcb, the connection to an X server. Debian's package has no CMake files of its own.
find_path(XCB_INCLUDE_DIR xcb/xcb.h)
find_library(XCB_LIBRARY xcb)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(XCB REQUIRED_VARS XCB_LIBRARY XCB_INCLUDE_DIR)
mark_as_advanced(XCB_INCLUDE_DIR XCB_LIBRARY)
include(VelmoraImported)
velmora_imported(XCB::xcb "${XCB_LIBRARY}" "${XCB_INCLUDE_DIR}")
