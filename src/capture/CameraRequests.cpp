#include "capture/CameraRequests.h"

#include "cameras/CameraTable.h"
#include "capture/CameraUrl.h"

#include <QDir>

namespace velmora {

CameraRequests::CameraRequests(const SettingsFile &settings, const StorageFolder &storage,
                               CaptureOptions &options)
    : settings_(settings)
    , storage_(storage)
    , options_(options)
{
}

HttpRequest CameraRequests::completed(HttpRequest request, const CameraLogin &login) const
{
    request.workFolder = storage_.workFolder();
    request.user = login.user;
    request.password = login.password;
    return request;
}

HttpRequest CameraRequests::stored(const SettingsSnapshot &settings, CameraAddress camera,
                                   const QString &url) const
{
    HttpRequest request =
        completed(requestFor(url, options_.downloadLimit()), cameraLogin(settings, camera));
    request.isCompared = cameraKeep(settings, camera).keep != Keep::Dated;
    return request;
}

// The login belongs to the stored address, not to a different one being typed.
HttpRequest CameraRequests::live(CameraAddress camera, const QString &url) const
{
    const SettingsSnapshot settings = settings_.snapshot();
    const bool isStored = CameraTable::url(settings, camera) == url;
    return completed(liveRequestFor(expandTemplate(url), options_.downloadLimit()),
                     isStored ? cameraLogin(settings, camera) : CameraLogin{});
}

// Nothing is stored of what is only tried, and no storage folder need be there for it. It is judged
// even where the disk does not take it.
HttpRequest CameraRequests::trial(const QString &address, const CameraLogin &login) const
{
    HttpRequest request =
        completed(requestFor(expandTemplate(address), options_.downloadLimit()), login);
    request.workFolder = QDir::tempPath();
    request.isCompared = true;
    return request;
}

} // namespace velmora
