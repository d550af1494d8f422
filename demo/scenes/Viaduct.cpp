// A valley with a stone viaduct, a river below it, and a train that crosses.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <QPainterPath>

namespace velmora::demo {
namespace {

constexpr double kRail = 186;
constexpr double kDeckBottom = 214;
constexpr double kArchWidth = 92;
constexpr double kPierWidth = 20;
constexpr int kArches = 8;

double archLeft(int arch)
{
    return -40 + arch * kArchWidth;
}

void drawArches(QPainter &painter)
{
    const QColor stone(0xcdb694);
    QPainterPath wall;
    wall.addRect(QRectF(0, kRail + 6, kSceneWidth, 214));
    for (int arch = 0; arch < kArches; ++arch) {
        const double left = archLeft(arch);
        const double wide = kArchWidth - kPierWidth;
        QPainterPath opening;
        opening.setFillRule(Qt::WindingFill);
        opening.addRect(QRectF(left, kDeckBottom + wide / 2, wide, 240));
        opening.addEllipse(QRectF(left, kDeckBottom, wide, wide));
        wall = wall.subtracted(opening);
    }
    painter.setBrush(stone);
    painter.drawPath(wall);
    fillRect(painter, QRectF(0, kRail + 2, kSceneWidth, 7), stone.darker(120));
    for (int arch = 0; arch < kArches; ++arch) {
        const double left = archLeft(arch);
        const double pier = left + kArchWidth - kPierWidth;
        fillRect(painter, QRectF(pier + 13, kDeckBottom + 34, 7, 158), stone.darker(114));
    }
}

void drawCoach(QPainter &painter, double left, QColor paint)
{
    fillRect(painter, QRectF(left, kRail - 36, 104, 32), paint, 6);
    fillRect(painter, QRectF(left, kRail - 16, 104, 4), QColor(0xf5e9c9));
    for (int window = 0; window < 5; ++window) {
        fillRect(painter, QRectF(left + 9 + window * 18.5, kRail - 31, 13, 11), QColor(0xe3f1f7),
                 2);
    }
    for (const double wheel : {16.0, 32.0, 72.0, 88.0}) {
        fillDisc(painter, {left + wheel, kRail - 3}, 5, QColor(0x2b2d31));
    }
}

void drawLocomotive(QPainter &painter, double left)
{
    const QColor paint(0x2d6a4f);
    fillRect(painter, QRectF(left, kRail - 42, 34, 38), paint, 4);
    fillRect(painter, QRectF(left + 8, kRail - 36, 18, 14), QColor(0xe3f1f7), 2);
    fillRect(painter, QRectF(left + 30, kRail - 30, 62, 24), paint, 10);
    fillRect(painter, QRectF(left + 72, kRail - 48, 10, 20), QColor(0x24302b), 2);
    fillRect(painter, QRectF(left + 48, kRail - 36, 12, 8), QColor(0xd9b44a), 4);
    fillPolygon(painter, {{left + 90, kRail - 12}, {left + 106, kRail}, {left + 90, kRail}},
                QColor(0xb23a2f));
    for (const double wheel : {14.0, 40.0, 62.0, 82.0}) {
        fillDisc(painter, {left + wheel, kRail - 5}, 7, QColor(0x2b2d31));
        fillDisc(painter, {left + wheel, kRail - 5}, 2.5, QColor(0xb23a2f));
    }
}

void drawTrain(QPainter &painter, double seconds)
{
    const double front = alongRoad(seconds, 23, 1150) - 60;
    for (int puff = 0; puff < 6; ++puff) {
        const QPointF place(front - 30 - puff * 27.0, kRail - 58 - puff * 7.0);
        fillDisc(painter, place, 9 + 3.2 * puff, QColor(250, 250, 250, 190 - 26 * puff));
    }
    drawLocomotive(painter, front - 106);
    for (int coach = 0; coach < 3; ++coach) {
        drawCoach(painter, front - 216 - coach * 110.0, QColor(0xb8433a));
    }
}

void drawRiver(QPainter &painter, double seconds)
{
    QPainterPath river({306, 346});
    river.cubicTo({330, 384}, {190, 408}, {150, 480});
    river.lineTo(470, 480);
    river.cubicTo({440, 420}, {370, 386}, {316, 346});
    painter.setBrush(QColor(0x5ea3c4));
    painter.drawPath(river);
    for (int i = 0; i < 16; ++i) {
        const double y = 366 + alongRoad(seconds + i * 7, 2.3, 78);
        const double x = 300 + (scatter(i, 1, 100) - 55) * (0.3 + (y - 366) / 60);
        drawLine(painter, {x, y}, {x + 18, y}, 1.8, QColor(255, 255, 255, 110));
    }
}

} // namespace

void drawViaduct(QPainter &painter, double seconds)
{
    fillBand(painter, 0, 330, QColor(0x74b7e4), QColor(0xf3f3dc));
    drawCloud(painter, {alongRoad(seconds, 1.8, 900) - 130, 56}, 38, QColor(255, 255, 255, 215));
    drawCloud(painter, {alongRoad(seconds + 350, 1.3, 900) - 130, 96}, 26,
              QColor(255, 255, 255, 190));
    drawHills(painter, {.y = 206, .height = 44, .wavelength = 560, .phase = 90}, QColor(0xa5c3b4));
    drawHills(painter, {.y = 276, .height = 30, .wavelength = 430, .phase = 260}, QColor(0x8bb886));
    drawHills(painter, {.y = 336, .height = 14, .wavelength = 350, .phase = 30}, QColor(0x78ab66));
    drawTrain(painter, seconds);
    drawArches(painter);
    drawHills(painter, {.y = 366, .height = 12, .wavelength = 640, .phase = 220}, QColor(0x659b54));
    drawRiver(painter, seconds);
    for (int i = 0; i < 12; ++i) {
        const double x = i < 5 ? 14 + i * 40.0 : 424 + (i - 5) * 36.0;
        drawTree(painter, {x, 404.0 + scatter(i, 1, 36)}, 54.0 + scatter(i, 2, 26),
                 QColor(0x4b8a45));
    }
}

} // namespace velmora::demo
