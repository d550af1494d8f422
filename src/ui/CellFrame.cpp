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
    painter.setPen(QPen(Qt::white, 1)); // stands out from pictures of the frame's own colour
    painter.drawRect(QRectF(rect()).adjusted(kLine + 0.5, kLine + 0.5, -kLine - 0.5, -kLine - 0.5));
}

} // namespace velmora
