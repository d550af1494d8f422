#include "ui/Lamp.h"

#include <QPainter>
#include <QRadialGradient>

namespace velmora {
namespace {

QColor colourOf(int bgr)
{
    const auto code = static_cast<unsigned>(bgr);
    return {static_cast<int>(code & 0xFFU), static_cast<int>((code >> 8U) & 0xFFU),
            static_cast<int>((code >> 16U) & 0xFFU)};
}

QString meaningOf(int bgr)
{
    switch (static_cast<LampColour>(bgr)) {
    case LampColour::Red:
        return Lamp::tr("red: failed or missing");
    case LampColour::Orange:
        return Lamp::tr("orange: loading");
    case LampColour::Yellow:
        return Lamp::tr("yellow: picture arrived");
    case LampColour::Green:
        return Lamp::tr("green: good");
    default:
        return Lamp::tr("off");
    }
}

} // namespace

Lamp::Lamp(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleDescription(meaningOf(bgr_));
}

void Lamp::setFillColor(int bgr)
{
    if (bgr == bgr_) {
        return;
    }
    bgr_ = bgr;
    setAccessibleDescription(meaningOf(bgr));
    update();
}

QSize Lamp::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void paintLamp(QPainter &painter, const QRectF &circle, const QColor &colour)
{
    constexpr int kGlow = 150;
    constexpr int kRim = 170;
    QRadialGradient light(circle.center() - QPointF(circle.width(), circle.height()) / 6,
                          circle.width() * 0.75);
    light.setColorAt(0, colour.lighter(kGlow));
    light.setColorAt(1, colour);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour.darker(kRim), 1));
    painter.setBrush(light);
    painter.drawEllipse(circle);
}

void Lamp::paintEvent(QPaintEvent *)
{
    constexpr qreal kInset = 1.5;
    const bool isLit = bgr_ != static_cast<int>(LampColour::None);
    QPainter painter(this);
    paintLamp(painter, QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset),
              isLit ? colourOf(bgr_) : palette().color(QPalette::Mid));
}

} // namespace velmora
