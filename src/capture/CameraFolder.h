// Where the images of a camera are.
#pragma once

#include "capture/CaptureServices.h"

namespace velmora {

/// Native path of the camera's folder under the storage folder, whether it is there or not: that of
/// the stored address, which is another than the one in the box while that is being edited. Empty
/// for a row without address, and for one whose address no folder name can hold.
[[nodiscard]] QString cameraFolder(const CaptureServices &services, CameraAddress camera);

/// Native path of the storage folder's "\tmp\", where files stand that are not whole yet; empty
/// when the folder's drive does not exist.
[[nodiscard]] QString workFolder(const CaptureServices &services);

} // namespace velmora
