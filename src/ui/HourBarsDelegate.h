// Paints the images of 24 hours as small bars in a cell of a table.
#pragma once

#include <QStyledItemDelegate>

namespace velmora {

class HourBarsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

} // namespace velmora
