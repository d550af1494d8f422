#include "browser/FileActions.h"

#include <QFile>
#include <QFileInfo>

namespace velmora {
namespace {

constexpr qsizetype kShownCharacters = 23;

QString killText(const QString &name)
{
    return QStringLiteral("Kill ") + name;
}

} // namespace

FileActions::FileActions(const StorageFolder &storage, const CameraFolders &folders,
                         const BrowserData &data, const Selection &selection, BrowserLists &lists)
    : storage_(storage)
    , folders_(folders)
    , data_(data)
    , selection_(selection)
    , lists_(lists)
{
}

bool FileActions::mayKill(const ImageFile &image) const
{
    return !image.isNone() && !storage_.isBeingEdited() && isInForce(storage_, image);
}

// The camera may have got another address since the image was listed.
bool FileActions::isOf(CameraAddress camera, const ImageFile &image) const
{
    return image.folder == folders_.of(camera);
}

std::optional<KillQuestion> FileActions::LstDir_KeyDown() const
{
    const ImageFile target = selection_.image();
    const CameraAddress camera = data_.files.camera();
    if (!mayKill(target) || !isOf(camera, target) ||
        !QFileInfo(nativePath(storage_, target)).isFile()) {
        return std::nullopt;
    }
    return KillQuestion{target, camera, killText(target.name)};
}

std::optional<KillQuestion> FileActions::LstDirCam_KeyDown() const
{
    const ImageFile target = selection_.image();
    const CameraAddress camera{data_.state.camera().group, selection_.row()};
    if (!mayKill(target) || !isOf(camera, target)) {
        return std::nullopt;
    }
    return KillQuestion{
        target, camera,
        killText(target.path().last(std::min(kShownCharacters, target.path().size())))};
}

QCoro::Task<> FileActions::kill(ImageFile target)
{
    if (!mayKill(target)) {
        Q_EMIT spared(target);
        co_await lists_.refresh(); // as it may have superseded a reading
        co_return;
    }
    const int row = data_.state.camera().row;
    if (QFile::remove(nativePath(storage_, target))) {
        Q_EMIT deleted(target);
    }
    lists_.owe();
    co_await lists_.lstCam_MouseUp();
    if (data_.state.view() == View::Group) {
        co_await lists_.DirImage();
        co_await lists_.LstDirCam_Click(row);
    }
}

} // namespace velmora
