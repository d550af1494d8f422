// Tool tips whose text comes from outside: an address, a path, a message.
#pragma once

#include <QString>
#include <QStyledItemDelegate>

class QWidget;

namespace velmora {

/// A tip that shows the text literally. Text that looks like markup would otherwise be treated as
/// such, and could even load a picture.
[[nodiscard]] QString plainTip(const QString &text);

/// Gives a widget such a tip.
void setPlainToolTip(QWidget &widget, const QString &text);

/// Of a list or table: an entry without room for its whole text has that text as its tip; every
/// other has the tip of the list.
class ElidedTips : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

} // namespace velmora
