#include "ui/ClickPicture.h"

#include "ui/ClickLabel.h"

#include <QKeyEvent>

namespace velmora {

ClickPicture::ClickPicture(QWidget *parent)
    : PictureView(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ClickPicture::keyPressEvent(QKeyEvent *event)
{
    if (isClickKey(*event)) {
        Q_EMIT clicked();
    } else {
        PictureView::keyPressEvent(event);
    }
}

void ClickPicture::paintEvent(QPaintEvent *event)
{
    PictureView::paintEvent(event);
    paintFocus(*this);
}

} // namespace velmora
