#include "ui/ElideLabel.h"

#include <QPainter>

namespace velmora {

void ElideLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
}

} // namespace velmora
