#include "ui/ElideLabel.h"

#include "ui/ToolTips.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace velmora {

bool ElideLabel::isElided() const
{
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

bool ElideLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isElided() && toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainTip(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void ElideLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
}

} // namespace velmora
