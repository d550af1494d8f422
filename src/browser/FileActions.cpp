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

FileActions::FileActions(const StorageFolder &storage, const BrowserData &data,
                         const Selection &selection, BrowserLists &lists)
    : storage_(storage)
    , data_(data)
    , selection_(selection)
    , lists_(lists)
{
}

bool FileActions::mayKill(const ImageFile &image) const
{
    return !image.isNone() && !storage_.isBeingEdited() && isInForce(storage_, image);
}

std::optional<KillQuestion> FileActions::LstDir_KeyDown() const
{
    const ImageFile target = selection_.image();
    if (!mayKill(target) || !QFileInfo(nativePath(storage_, target)).isFile()) {
        return std::nullopt;
    }
    return KillQuestion{target, data_.files.camera(), killText(target.name)};
}

std::optional<KillQuestion> FileActions::LstDirCam_KeyDown() const
{
    const ImageFile target = selection_.image();
    if (!mayKill(target)) {
        return std::nullopt;
    }
    return KillQuestion{
        target,
        {data_.state.camera().group, selection_.row()},
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
