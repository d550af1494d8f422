#include "tools/SourceList.h"

#include "base/OneLine.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace velmora {

SourceList::SourceList(QObject *parent)
    : QAbstractListModel(parent)
    , names_(std::make_shared<const NameList>())
{
}

void SourceList::bind(SortedNames names)
{
    const QByteArray before = selected();
    beginResetModel();
    names_ = std::move(names);
    index_ = count() > 0 ? std::max(find(before), 0) : -1;
    endResetModel();
    Q_EMIT selectionChanged(index_);
}

int SourceList::find(const QByteArray &wanted) const
{
    const std::vector<ListedName> &list = names_->list();
    const auto place = std::ranges::lower_bound(
        list, wanted, [](QByteArrayView a, QByteArrayView b) { return compareNames(a, b) < 0; },
        &ListedName::view);
    const bool isThere = place != list.end() && place->view() == wanted;
    return isThere ? static_cast<int>(place - list.begin()) : -1;
}

int SourceList::count() const
{
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(names_->list().size(), kMost));
}

void SourceList::setListIndex(int index)
{
    index_ = index >= 0 && index < count() ? index : -1;
    Q_EMIT selectionChanged(index_);
}

void SourceList::press(int index)
{
    pressed_ = name(index).toByteArray();
}

QByteArrayView SourceList::name(int index) const
{
    return names_->list()[static_cast<std::size_t>(index)].view();
}

QByteArray SourceList::selected() const
{
    return index_ < 0 ? QByteArray() : name(index_).toByteArray();
}

int SourceList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant SourceList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole) {
        return {};
    }
    return onOneLine(QFile::decodeName(name(index.row()).toByteArray()));
}

} // namespace velmora
