#include "tools/FolderList.h"

#include "base/OneLine.h"
#include "tools/FolderPath.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace velmora {

FolderList::FolderList(QObject *parent)
    : QAbstractListModel(parent)
    , names_(std::make_shared<const NameList>())
{
}

void FolderList::open(const QString &path)
{
    beginResetModel();
    path_ = folderPath(path);
    levels_ = folderLevels(path_);
    names_ = std::make_shared<const NameList>();
    endResetModel();
}

// The open levels stay as they are, as does a selection among them.
void FolderList::setSubFolders(SortedNames names)
{
    const int first = openRow() + 1;
    if (subFolders() > 0) {
        beginRemoveRows({}, first, rowCount() - 1);
        names_ = std::make_shared<const NameList>();
        endRemoveRows();
    }
    if (!names->list().empty()) {
        beginInsertRows({}, first, first + static_cast<int>(names->list().size()) - 1);
        names_ = std::move(names);
        endInsertRows();
    }
}

int FolderList::subFolders() const
{
    return static_cast<int>(names_->list().size());
}

QString FolderList::nameAt(int row) const
{
    if (row <= openRow()) {
        return levels_.at(row);
    }
    const auto index = static_cast<std::size_t>(row - openRow() - 1);
    return QFile::decodeName(names_->list()[index].view().toByteArray());
}

QString FolderList::pathAt(int row) const
{
    if (row < 0 || row >= rowCount()) {
        return {};
    }
    return row <= openRow() ? folderAtLevel(path_, row + 1) : subFolder(path_, nameAt(row));
}

int FolderList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : openRow() + 1 + subFolders();
}

QVariant FolderList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return onOneLine(nameAt(index.row()));
    case kDepthRole:
        return std::min(index.row(), openRow() + 1);
    case kOpenRole:
        return index.row() <= openRow();
    default:
        return {};
    }
}

} // namespace velmora
