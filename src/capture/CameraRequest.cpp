#include "capture/CameraRequest.h"

#include "cameras/CameraChoices.h"
#include "capture/CameraUrl.h"

namespace velmora {
namespace {

HttpRequest completed(HttpRequest request, const CaptureServices &services,
                      const CameraLogin &login)
{
    request.workFolder = services.storage.workFolder();
    request.user = login.user;
    request.password = login.password;
    return request;
}

} // namespace

HttpRequest cameraRequest(const CaptureServices &services, CameraAddress camera, const QString &url)
{
    return completed(requestFor(url, services.options.downloadLimit()), services,
                     cameraLogin(services.table.settings(), camera));
}

// The login belongs to the stored address, not to another that is being typed.
HttpRequest liveCameraRequest(const CaptureServices &services, CameraAddress camera,
                              const QString &url)
{
    const SettingsSnapshot settings = services.table.settings().snapshot();
    const bool isStored = CameraTable::url(settings, camera) == url;
    return completed(liveRequestFor(expandTemplate(url), services.options.downloadLimit()),
                     services, isStored ? cameraLogin(settings, camera) : CameraLogin{});
}

} // namespace velmora
