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

FileActions::FileActions(StorageFolder &storage, BrowserLists &lists)
    : storage_(storage)
    , lists_(lists)
{
}

std::optional<KillQuestion> FileActions::LstDir_KeyDown() const
{
    const ImageFile target = lists_.selected();
    if (storage_.isBeingEdited() || target.isNone() ||
        !QFileInfo(nativePath(storage_, target)).isFile()) {
        return std::nullopt;
    }
    return KillQuestion{target, lists_.state().camera, killText(target.name)};
}

std::optional<KillQuestion> FileActions::LstDirCam_KeyDown() const
{
    const ImageFile target = lists_.selected();
    if (storage_.isBeingEdited() || target.isNone()) {
        return std::nullopt;
    }
    return KillQuestion{
        target,
        {lists_.state().camera.group, lists_.cameraIndex()},
        killText(target.path().last(std::min(kShownCharacters, target.path().size())))};
}

QCoro::Task<> FileActions::kill(ImageFile target)
{
    if (storage_.isBeingEdited()) { // since the question
        co_return;
    }
    const int row = lists_.state().camera.row;
    static_cast<void>(QFile::remove(nativePath(storage_, target)));
    lists_.owe();
    co_await lists_.lstCam_MouseUp();
    if (lists_.state().view == View::Group) {
        co_await lists_.DirImage();
        co_await lists_.LstDirCam_Click(row);
    }
}

} // namespace velmora
