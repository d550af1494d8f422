#include "ui/ToolTips.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace velmora {

QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

void setPlainToolTip(QWidget &widget, const QString &text)
{
    widget.setToolTip(plainTip(text));
}

bool ElidedTips::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                           const QStyleOptionViewItem &option, const QModelIndex &index)
{
    QStyleOptionViewItem oneLine = option;
    oneLine.features &= ~QStyleOptionViewItem::ViewItemFeatures(QStyleOptionViewItem::WrapText);
    const QRect seen = option.rect & view->viewport()->rect();
    const bool isElided = index.isValid() && sizeHint(oneLine, index).width() > seen.width();
    if (event->type() != QEvent::ToolTip || !isElided) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString text = displayText(index.data(), option.locale);
    QToolTip::showText(event->globalPos(), plainTip(text), view->viewport(), option.rect);
    return true;
}

} // namespace velmora
