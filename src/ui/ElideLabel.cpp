#include "ui/ElideLabel.h"

#include <QPainter>

namespace velmora {

void ElideLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), mode_, contentsRect().width()));
}

} // namespace velmora
