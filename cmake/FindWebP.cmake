# WebP::webp, the library that decodes a picture as its bytes come. Debian's package has no CMake files of its own.
find_path(WebP_INCLUDE_DIR webp/decode.h)
find_library(WebP_LIBRARY webp)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(WebP REQUIRED_VARS WebP_LIBRARY WebP_INCLUDE_DIR)
mark_as_advanced(WebP_INCLUDE_DIR WebP_LIBRARY)
include(VelmoraImported)
velmora_imported(WebP::webp "${WebP_LIBRARY}" "${WebP_INCLUDE_DIR}")
