#include "browser/CameraFolders.h"

#include "base/Folders.h"

#include <QFile>

namespace velmora {

CameraFolders::CameraFolders(const BrowserServices &services, const BrowserState &state)
    : services_(services)
    , state_(state)
    , reader_(services.capture.clock)
{
}

QString CameraFolders::of(CameraAddress camera) const
{
    return services_.capture.storage.cameraFolderText(camera);
}

bool CameraFolders::mayRead()
{
    isMissed_ = !state_.LectureOK() || !isStorageReady(services_);
    return !isMissed_;
}

QCoro::Task<std::shared_ptr<const ImageNames>> CameraFolders::names(QString folder)
{
    make(folder);
    const QString path = services_.capture.storage.native(folder);
    std::shared_ptr<const ImageNames> names = co_await reader_.names(path, reading_.get_token());
    if (!names) {
        throw Superseded();
    }
    co_return names;
}

QCoro::Task<ImageFile> CameraFolders::newest(CameraAddress camera)
{
    const StorageFolder &storage = services_.capture.storage;
    const QString folder = of(camera);
    if (folder == storage.inForce()) {
        co_return ImageFile();
    }
    const std::optional<NewestImage> found =
        co_await reader_.newest(storage.native(folder), reading_.get_token());
    if (!found) {
        throw Superseded();
    }
    co_return ImageFile{folder, QFile::decodeName(found->name)};
}

// A missing camera folder is made along with all the others. A failure is reported once, and the
// storage folder itself is never made here: its disk may just be away.
void CameraFolders::make(const QString &folder)
{
    StorageFolder &storage = services_.capture.storage;
    const QString path = storage.native(folder);
    if (leavesMissing_ || path.isEmpty() || folderExists(path) || notMade_.contains(path)) {
        return;
    }
    if (!storage.isPresent()) {
        storage.recheck();
        return;
    }
    storage.MakeDir_Click();
    rememberNotMade();
}

void CameraFolders::rememberNotMade()
{
    for (const CameraAddress camera : kAllCameras) {
        const QString path = services_.capture.storage.native(of(camera));
        if (!folderExists(path)) {
            notMade_.insert(path);
        }
    }
}

void CameraFolders::supersede()
{
    reading_.request_stop();
}

void CameraFolders::allowReading()
{
    reading_ = std::stop_source();
}

} // namespace velmora
