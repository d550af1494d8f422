// Paints a colour in a cell of a table as a lamp.
#pragma once

#include <QStyledItemDelegate>

namespace velmora {

/// The colour stays as it is in a selected row, where the toolkit's own would be tinted.
class LampDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace velmora
