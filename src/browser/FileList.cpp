#include "browser/FileList.h"

#include "base/OneLine.h"

#include <QFile>

#include <limits>
#include <utility>

namespace velmora {

FileList::FileList(QObject *parent)
    : QAbstractListModel(parent)
    , names_(std::make_shared<const ImageNames>())
{
}

void FileList::bind(CameraAddress camera, const QString &folder,
                    std::shared_ptr<const ImageNames> names)
{
    beginResetModel();
    camera_ = camera;
    folder_ = folder;
    names_ = std::move(names);
    index_ = -1;
    endResetModel();
    Q_EMIT selectionChanged(index_);
}

int FileList::count() const
{
    constexpr qsizetype kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(names_->count(), kMost));
}

void FileList::setListIndex(int index)
{
    index_ = index >= 0 && index < count() ? index : -1;
    Q_EMIT selectionChanged(index_);
}

ImageFile FileList::file(int position) const
{
    if (position < 0 || position >= count()) {
        return {};
    }
    return {folder_, QFile::decodeName(names_->name(position))};
}

std::optional<int> FileList::find(const ImageFile &image) const
{
    if (image.isNone() || image.folder != folder_) {
        return std::nullopt;
    }
    const std::optional<qsizetype> place = names_->find(QFile::encodeName(image.name));
    return place && *place < count() ? std::optional(static_cast<int>(*place)) : std::nullopt;
}

int FileList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FileList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole) {
        return {};
    }
    return onOneLine(file(index.row()).name);
}

} // namespace velmora
