#include "browser/CameraFolders.h"

#include "base/Folders.h"

#include <QFile>

namespace velmora {

CameraFolders::CameraFolders(StorageFolder &storage, Scheduler &scheduler, Clock &clock,
                             const BrowserState &state)
    : storage_(storage)
    , scheduler_(scheduler)
    , state_(state)
    , reader_(clock)
{
}

QString CameraFolders::of(CameraAddress camera) const
{
    return storage_.cameraFolderText(camera);
}

void CameraFolders::settleStorage()
{
    if (storage_.isCheckRequested()) {
        storage_.testSA();
    }
    if (storage_.isBeingEdited()) {
        scheduler_.ArretTimer();
    }
}

bool CameraFolders::beginReading()
{
    if (state_.LectureOK()) {
        settleStorage();
    }
    isMissed_ = !state_.LectureOK() || !storage_.isUsable();
    return !isMissed_;
}

QCoro::Task<std::shared_ptr<const ImageNames>> CameraFolders::names(QString folder)
{
    make(folder);
    const QString path = storage_.native(folder);
    std::shared_ptr<const ImageNames> names = co_await reader_.names(path, reading_.get_token());
    if (!names) {
        throw Superseded();
    }
    co_return names;
}

QCoro::Task<ImageFile> CameraFolders::newest(CameraAddress camera)
{
    const QString folder = of(camera);
    if (folder == storage_.inForce()) {
        co_return ImageFile();
    }
    const std::optional<NewestImage> found =
        co_await reader_.newest(storage_.native(folder), reading_.get_token());
    if (!found) {
        throw Superseded();
    }
    co_return ImageFile{folder, QFile::decodeName(found->name)};
}

bool CameraFolders::hasLost(const ImageFile &image) const
{
    return !image.isNone() && storage_.isUsable() && !QFile::exists(nativePath(storage_, image));
}

// A missing camera folder is made along with all the others. A failure is reported once, and the
// storage folder itself is never made here: its disk may just be away.
void CameraFolders::make(const QString &folder)
{
    const QString path = storage_.native(folder);
    if (leavesMissing_ || path.isEmpty() || folderExists(path) || notMade_.contains(path)) {
        return;
    }
    if (!storage_.isPresent()) {
        storage_.recheck();
        return;
    }
    storage_.makeMissing();
    rememberNotMade();
}

void CameraFolders::rememberNotMade()
{
    for (const CameraAddress camera : kAllCameras) {
        const QString path = storage_.native(of(camera));
        if (!folderExists(path)) {
            notMade_.insert(path);
        }
    }
}

void CameraFolders::supersede()
{
    reading_.request_stop();
}

void CameraFolders::startReadings()
{
    reading_ = std::stop_source();
}

} // namespace velmora
