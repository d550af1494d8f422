#include "demo/scenes/Shapes.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>

#include <cmath>
#include <numbers>

namespace velmora::demo {
namespace {

constexpr double kRidgeStep = 8;
constexpr double kTurn = 2 * std::numbers::pi;

} // namespace

double alongRoad(double seconds, double pixelsPerSecond, double length)
{
    return std::fmod(seconds * pixelsPerSecond, length);
}

double swing(double seconds, double period)
{
    return std::sin(std::fmod(seconds, period) / period * kTurn);
}

int scatter(int first, int second, int limit)
{
    auto mixed =
        static_cast<quint32>(first) * 0x9e3779b1U + static_cast<quint32>(second) * 0x85ebca77U;
    mixed = (mixed ^ (mixed >> 15U)) * 0x2c1b3c6dU;
    mixed = (mixed ^ (mixed >> 12U)) * 0x297a2d39U;
    return static_cast<int>((mixed ^ (mixed >> 15U)) % static_cast<quint32>(limit));
}

void fillBand(QPainter &painter, double top, double bottom, QColor from, QColor to)
{
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    painter.fillRect(QRectF(0, top, kSceneWidth, bottom - top), gradient);
}

void fillRect(QPainter &painter, const QRectF &rect, QColor colour, double cornerRadius)
{
    painter.setBrush(colour);
    painter.drawRoundedRect(rect, cornerRadius, cornerRadius);
}

void fillDisc(QPainter &painter, QPointF centre, double radius, QColor colour)
{
    painter.setBrush(colour);
    painter.drawEllipse(centre, radius, radius);
}

void fillPolygon(QPainter &painter, std::initializer_list<QPointF> corners, QColor colour)
{
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF(QList<QPointF>(corners)));
}

void drawLine(QPainter &painter, QPointF from, QPointF to, double width, QColor colour)
{
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(from, to);
    painter.setPen(Qt::NoPen);
}

void drawGlow(QPainter &painter, QPointF centre, double radius, QColor colour)
{
    QRadialGradient gradient(centre, radius);
    QColor nothing = colour;
    nothing.setAlpha(0);
    gradient.setColorAt(0, colour);
    gradient.setColorAt(1, nothing);
    painter.setBrush(gradient);
    painter.drawEllipse(centre, radius, radius);
}

void drawCloud(QPainter &painter, QPointF centre, double size, QColor colour)
{
    QPainterPath cloud;
    cloud.setFillRule(Qt::WindingFill);
    cloud.addEllipse(centre + QPointF(-0.75 * size, 0), 0.5 * size, 0.4 * size);
    cloud.addEllipse(centre + QPointF(-0.1 * size, -0.25 * size), 0.65 * size, 0.6 * size);
    cloud.addEllipse(centre + QPointF(0.7 * size, -0.05 * size), 0.55 * size, 0.45 * size);
    cloud.addRoundedRect(QRectF(centre.x() - 1.25 * size, centre.y(), 2.5 * size, 0.4 * size),
                         0.2 * size, 0.2 * size);
    painter.setBrush(colour);
    painter.drawPath(cloud);
}

double ridgeAt(const Ridge &ridge, double x)
{
    const double turn = (x + ridge.phase) / ridge.wavelength * kTurn;
    return ridge.y - ridge.height * (0.7 * std::sin(turn) + 0.3 * std::sin(2.3 * turn));
}

void drawHills(QPainter &painter, const Ridge &ridge, QColor colour)
{
    QPolygonF outline;
    for (int step = 0; step * kRidgeStep <= kSceneWidth; ++step) {
        const double x = step * kRidgeStep;
        outline << QPointF(x, ridgeAt(ridge, x));
    }
    outline << QPointF(kSceneWidth, kSceneHeight) << QPointF(0, kSceneHeight);
    painter.setBrush(colour);
    painter.drawPolygon(outline);
}

void drawTree(QPainter &painter, QPointF foot, double height, QColor leaves)
{
    const double crown = 0.3 * height;
    const QPointF middle = foot - QPointF(0, height - crown);
    fillRect(painter, QRectF(foot.x() - 0.04 * height, middle.y(), 0.08 * height, height - crown),
             QColor(0x6b4a33));
    fillDisc(painter, middle + QPointF(-0.6 * crown, 0.35 * crown), 0.75 * crown,
             leaves.darker(112));
    fillDisc(painter, middle + QPointF(0.6 * crown, 0.35 * crown), 0.75 * crown,
             leaves.darker(106));
    fillDisc(painter, middle, crown, leaves);
}

void drawFir(QPainter &painter, QPointF foot, double height, QColor needles)
{
    constexpr int kTiers = 3;
    fillRect(
        painter,
        QRectF(foot.x() - 0.04 * height, foot.y() - 0.15 * height, 0.08 * height, 0.15 * height),
        QColor(0x5a4030));
    for (int tier = 0; tier < kTiers; ++tier) {
        const double base = foot.y() - height * (0.12 + 0.25 * tier);
        const double half = height * (0.26 - 0.06 * tier);
        fillPolygon(
            painter,
            {{foot.x() - half, base}, {foot.x() + half, base}, {foot.x(), base - 0.38 * height}},
            needles.lighter(100 + 6 * tier));
    }
}

void drawBird(QPainter &painter, QPointF centre, double span, QColor colour)
{
    QPainterPath wings(centre + QPointF(-span / 2, -0.12 * span));
    wings.quadTo(centre + QPointF(-span / 4, -0.4 * span), centre);
    wings.quadTo(centre + QPointF(span / 4, -0.4 * span), centre + QPointF(span / 2, -0.12 * span));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, span / 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(wings);
    painter.setPen(Qt::NoPen);
}

} // namespace velmora::demo
