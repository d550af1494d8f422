# The Debian package: run `cpack` in a build folder to make it from what the install rules list.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmora)
set(CPACK_PACKAGE_CONTACT "Velmora developers <velmora@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/VelmoraPackagePermissions.cmake")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Libraries are found by Debian's own tool; their packages bring the toolkit's plugins for X and JPEG.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcurl4 (>= 7.88)") # loaded by name, which that tool cannot see
# Without these the program runs, but: https cameras are refused without the authorities' certificates; RTSP
# streams give no picture and films are not made without ffmpeg; the buttons that open folders and images need
# xdg-open; WebP pictures are stored, but not shown, without the toolkit's plugin for them; the toolkit runs on a
# Wayland desktop through X, unless it has its plugin.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, ffmpeg, qt6-image-formats-plugins, qt6-wayland, xdg-utils")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "capture and show still images from network cameras")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Velmora fetches the picture of up to a hundred network cameras on a timer,
keeps it only when the server says that it is new, and files it in a folder
of that camera's own, under a name made of the image's date and time.
.
Its windows show the images of one camera as a contact sheet or a film, or
the newest image of each camera of a group, and follow new ones as they come.
It also captures without windows, for which it brings a service that a user
may switch on.")
include(CPack)
