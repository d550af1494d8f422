// Wind turbines on hills of corn and rape: the rotors turn, a balloon drifts by, sheep graze.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <QPainterPath>

#include <cmath>

namespace velmora::demo {
namespace {

void drawTurbine(QPainter &painter, QPointF foot, double height, double turn)
{
    const double blade = 0.48 * height;
    const QPointF hub = foot - QPointF(0, height);
    fillPolygon(painter,
                {foot + QPointF(-0.035 * height, 0), foot + QPointF(0.035 * height, 0),
                 hub + QPointF(0.015 * height, 0), hub + QPointF(-0.015 * height, 0)},
                QColor(0xf6f6f2));
    fillPolygon(painter,
                {foot, foot + QPointF(0.035 * height, 0), hub + QPointF(0.015 * height, 0), hub},
                QColor(0xdcdfe0));
    painter.save();
    painter.translate(hub);
    painter.rotate(turn);
    for (int i = 0; i < 3; ++i) {
        painter.rotate(120);
        fillPolygon(
            painter,
            {{-0.02 * blade, 0}, {-0.07 * blade, -0.25 * blade}, {0, -blade}, {0.03 * blade, 0}},
            QColor(0xfdfdfb));
    }
    painter.restore();
    fillDisc(painter, hub, 0.035 * height, QColor(0xc9cdcf));
}

void drawBalloon(QPainter &painter, QPointF middle)
{
    constexpr double kRadius = 40;
    QPainterPath envelope(middle + QPointF(-9, 58));
    envelope.cubicTo(middle + QPointF(-30, 40), middle + QPointF(-kRadius, 22),
                     middle + QPointF(-kRadius, 0));
    envelope.arcTo(QRectF(middle.x() - kRadius, middle.y() - kRadius, 2 * kRadius, 2 * kRadius),
                   180, -180);
    envelope.cubicTo(middle + QPointF(kRadius, 22), middle + QPointF(30, 40),
                     middle + QPointF(9, 58));
    painter.save();
    painter.setClipPath(envelope);
    for (int stripe = 0; stripe < 5; ++stripe) {
        fillRect(painter, QRectF(middle.x() - kRadius + stripe * 16, middle.y() - kRadius, 16, 110),
                 QColor(stripe % 2 == 0 ? 0xe4572e : 0xf6c453));
    }
    painter.restore();
    drawLine(painter, middle + QPointF(-8, 58), middle + QPointF(-7, 74), 1.2, QColor(0x4a3b2f));
    drawLine(painter, middle + QPointF(8, 58), middle + QPointF(7, 74), 1.2, QColor(0x4a3b2f));
    fillRect(painter, QRectF(middle.x() - 9, middle.y() + 73, 18, 14), QColor(0x8a5a34), 3);
}

void drawSheep(QPainter &painter, QPointF foot)
{
    for (const double leg : {-9.0, 8.0}) {
        fillRect(painter, QRectF(foot.x() + leg, foot.y() - 10, 3, 10), QColor(0x3c3835));
    }
    painter.setBrush(QColor(0xfaf6ec));
    painter.drawEllipse(foot + QPointF(0, -16), 17, 10);
    painter.drawEllipse(foot + QPointF(-5, -20), 9, 8);
    fillDisc(painter, foot + QPointF(18, -15), 6, QColor(0x3c3835));
}

// Rows of plants that follow the ridge.
void drawRows(QPainter &painter, const Ridge &ridge, QColor colour)
{
    for (int row = 0; row < 5; ++row) {
        const double depth = 14 + row * 12;
        for (int plant = 0; plant < 36; ++plant) {
            const double x = 4 + plant * 18;
            const double y = ridgeAt(ridge, x) + depth;
            drawLine(painter, {x, y}, {x + 9, ridgeAt(ridge, x + 9) + depth}, 2.4, colour);
        }
    }
}

} // namespace

void drawWindFarm(QPainter &painter, double seconds)
{
    constexpr Ridge kFar = {.y = 296, .height = 22, .wavelength = 520, .phase = 40};
    constexpr Ridge kMiddle = {.y = 336, .height = 24, .wavelength = 610, .phase = 330};
    constexpr Ridge kNear = {.y = 398, .height = 16, .wavelength = 700, .phase = 120};
    fillBand(painter, 0, 320, QColor(0x58a9e0), QColor(0xf4f0d8));
    drawCloud(painter, {alongRoad(seconds, 2.6, 900) - 130, 66}, 44, QColor(255, 255, 255, 220));
    drawCloud(painter, {alongRoad(seconds + 210, 1.9, 900) - 130, 130}, 30,
              QColor(255, 255, 255, 190));
    drawHills(painter, kFar, QColor(0xa9c98c));
    drawTurbine(painter, {92, ridgeAt(kFar, 92) + 4}, 112, std::fmod(seconds * 17, 360));
    drawTurbine(painter, {560, ridgeAt(kFar, 560) + 4}, 104, std::fmod(seconds * 19 + 40, 360));
    drawHills(painter, kMiddle, QColor(0xe6c94f));
    drawRows(painter, kMiddle, QColor(0xd2b23c));
    drawTurbine(painter, {226, ridgeAt(kMiddle, 226) + 6}, 190, std::fmod(seconds * 13 + 70, 360));
    drawTurbine(painter, {452, ridgeAt(kMiddle, 452) + 6}, 216, std::fmod(seconds * 11 + 25, 360));
    drawBalloon(painter, {760 - alongRoad(seconds, 3.4, 880), 120 + 24 * swing(seconds, 131)});
    drawHills(painter, kNear, QColor(0x74ae58));
    for (int sheep = 0; sheep < 6; ++sheep) {
        const double x = 60 + sheep * 98.0 + 26 * swing(seconds + sheep * 31, 240);
        drawSheep(painter, {x, ridgeAt(kNear, x) + 16.0 + scatter(sheep, 3, 26)});
    }
}

} // namespace velmora::demo
