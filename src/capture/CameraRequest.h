// The request for a camera's picture: address, time limit, login, work folder.
#pragma once

#include "capture/CaptureServices.h"
#include "capture/HttpRequest.h"

namespace velmora {

/// url: the stored address with its alternatives resolved.
[[nodiscard]] HttpRequest cameraRequest(const CaptureServices &services, CameraAddress camera,
                                        const QString &url);

/// The same for the live view, whose address is that of the box.
[[nodiscard]] HttpRequest liveCameraRequest(const CaptureServices &services, CameraAddress camera,
                                            const QString &url);

} // namespace velmora
