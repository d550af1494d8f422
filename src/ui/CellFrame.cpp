#include "ui/CellFrame.h"

#include <QPainter>

namespace velmora {

CellFrame::CellFrame(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void CellFrame::setBorderStyle(int style)
{
    if (style_ != style) {
        style_ = style;
        update();
    }
}

void CellFrame::paintEvent(QPaintEvent *)
{
    constexpr int kLine = 3;
    constexpr qreal kHalf = kLine / 2.0;
    if (style_ == 0) {
        return;
    }
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), kLine, Qt::SolidLine, Qt::SquareCap,
                        Qt::MiterJoin));
    painter.drawRect(QRectF(rect()).adjusted(kHalf, kHalf, -kHalf, -kHalf));
}

} // namespace velmora
