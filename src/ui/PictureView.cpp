#include "ui/PictureView.h"

#include "ui/HeatColour.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace velmora {
namespace {

constexpr int kCaptionRoom = 4;
constexpr double kNoticeStrength = 0.6; // of the window's text
const QColor kCaptionBack(0, 0, 0, 200);
const QColor kSurround(24, 24, 24);

} // namespace

PictureView::PictureView(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureView::showPicture(const QString &path, const QImage &image)
{
    path_ = path;
    image_ = image;
    setAccessibleDescription(image.isNull() ? QString() : path);
    update();
}

void PictureView::clear()
{
    showPicture(QString(), QImage());
}

void PictureView::setEmptyText(const QString &text)
{
    if (emptyText_ != text) {
        emptyText_ = text;
        update();
    }
}

QString PictureView::notice() const
{
    if (holdsPicture()) {
        return {};
    }
    return path_.isEmpty() ? emptyText_ : tr("not a picture");
}

void PictureView::setCaption(const QString &caption)
{
    if (caption_ != caption) {
        caption_ = caption;
        update();
    }
}

QSize PictureView::pixels() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QRectF PictureView::place() const
{
    if (shape_ == Shape::Stretched) {
        return rect();
    }
    QSizeF fitting = QSizeF(image_.size()).scaled(size(), Qt::KeepAspectRatio);
    QRectF place(QPointF(), fitting);
    place.moveCenter(QRectF(rect()).center());
    return place;
}

void PictureView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (image_.isNull()) {
        paintPlaceholder(painter);
    } else {
        paintPicture(painter);
    }
    if (!caption_.isEmpty()) {
        paintCaption(painter);
    }
}

void PictureView::paintPicture(QPainter &painter) const
{
    const QRectF target = place();
    if (target != QRectF(rect())) {
        painter.fillRect(rect(), kSurround);
    }
    const bool exact = (target.size() * devicePixelRatioF()).toSize() == image_.size();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !exact && scaling_ == Scaling::Smooth);
    painter.drawImage(target, image_);
}

// An empty place is a shade of the window; a file that is not a picture says so.
void PictureView::paintPlaceholder(QPainter &painter) const
{
    const QColor back = palette().color(QPalette::Window);
    const bool dark = back.lightness() < 128;
    const QRectF frame = QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5);
    painter.fillRect(rect(), back);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(palette().color(QPalette::Mid), 1, path_.isEmpty() ? Qt::DotLine : Qt::SolidLine));
    painter.setBrush(dark ? back.lighter(115) : back.darker(104));
    painter.drawRoundedRect(frame, 4, 4);
    // not the palette's colour for placeholders, which some dark palettes leave black
    painter.setPen(mixedColour(back, palette().color(QPalette::WindowText), kNoticeStrength));
    painter.drawText(frame, Qt::AlignCenter | Qt::TextWordWrap, notice());
}

void PictureView::paintCaption(QPainter &painter) const
{
    const int height = fontMetrics().height() + kCaptionRoom;
    const QRect band(0, this->height() - height, width(), height);
    painter.fillRect(band, kCaptionBack);
    painter.setPen(Qt::white);
    const QRect text = band.adjusted(kCaptionRoom, 0, -kCaptionRoom, 0);
    painter.drawText(text, Qt::AlignCenter,
                     fontMetrics().elidedText(caption_, Qt::ElideMiddle, text.width()));
}

void PictureView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        pressed_ = true;
        pressedAt_ = event->timestamp();
    }
    Q_EMIT pressed(event->button(), event->modifiers());
}

void PictureView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && pressed_) {
        pressed_ = false;
        Q_EMIT released();
        if (rect().contains(event->position().toPoint())) {
            Q_EMIT clicked();
        }
    }
}

// The toolkit also calls a press the second one when the first has removed what was in front.
bool PictureView::isSecondClick(const QMouseEvent &event) const
{
    const auto interval = static_cast<quint64>(QApplication::doubleClickInterval());
    return pressedAt_ && event.timestamp() <= *pressedAt_ + interval;
}

void PictureView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
    } else if (isSecondClick(*event)) {
        Q_EMIT doubleClicked();
    }
}

void PictureView::mouseMoveEvent(QMouseEvent *event)
{
    Q_EMIT pointerMoved(event->position().toPoint());
}

void PictureView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Q_EMIT resized();
}

} // namespace velmora
