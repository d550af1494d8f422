// Paints the state of a camera in a cell of the health table as a lamp.
#pragma once

#include <QStyledItemDelegate>

namespace velmora {

/// Its colour stays the same in a selected row, where the toolkit's own would be tinted.
class LampDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace velmora
