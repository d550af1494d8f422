#include "capture/CameraFolder.h"

namespace velmora {

QString cameraFolder(const CaptureServices &services, CameraAddress camera)
{
    const QString name = services.problems.orDefault(
        [&] { return services.table.CameraFolderName(camera); }, QString());
    return name.isEmpty() ? QString() : services.storage.native(services.storage.folderText(name));
}

QString workFolder(const CaptureServices &services)
{
    return services.storage.native(services.storage.folderText(u"\\tmp\\"));
}

} // namespace velmora
