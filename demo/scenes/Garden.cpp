// A garden behind the house: flower beds, an apple tree, a pond with a duck, and butterflies.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <QPainterPath>

#include <array>

namespace velmora::demo {
namespace {

constexpr std::array<QRgb, 5> kPetals = {0xe8505b, 0xf9c74f, 0xf28ac0, 0xfdfdf6, 0x9b6fd1};

QColor petalColour(int number)
{
    return {kPetals.at(static_cast<std::size_t>(scatter(number, 5, 5)))};
}

void drawFence(QPainter &painter)
{
    for (int picket = 0; picket < 25; ++picket) {
        const double x = 4 + picket * 26.0;
        fillPolygon(painter, {{x, 262}, {x, 196}, {x + 8, 186}, {x + 16, 196}, {x + 16, 262}},
                    QColor(0xfbf8f0));
    }
    fillRect(painter, QRectF(0, 206, kSceneWidth, 7), QColor(0xe9e3d4));
    fillRect(painter, QRectF(0, 240, kSceneWidth, 7), QColor(0xe9e3d4));
}

void drawFlower(QPainter &painter, QPointF foot, double size, QColor petals)
{
    const QPointF head = foot - QPointF(0, 3.4 * size);
    drawLine(painter, foot, head, 0.35 * size, QColor(0x3f7d3a));
    fillPolygon(painter,
                {foot - QPointF(0, size), foot + QPointF(1.4 * size, -2.1 * size),
                 foot - QPointF(0, 1.6 * size)},
                QColor(0x4c9145));
    painter.save();
    painter.translate(head);
    for (int petal = 0; petal < 5; ++petal) {
        painter.rotate(72);
        fillDisc(painter, {0, -0.75 * size}, 0.62 * size, petals);
    }
    painter.restore();
    fillDisc(painter, head, 0.5 * size, QColor(0xf6d04d));
}

void drawBed(QPainter &painter, double left, double right, double y, double size)
{
    fillRect(painter, QRectF(left, y - 0.9 * size, right - left, 1.8 * size), QColor(0x5c4433),
             0.9 * size);
    const int first = static_cast<int>(y);
    const int count = static_cast<int>((right - left - 2 * size) / (2.3 * size)) + 1;
    for (int number = first; number < first + count; ++number) {
        const double x = left + size * (1 + 2.3 * (number - first));
        const double dip = scatter(number, 9, 10) * size / 20;
        drawFlower(painter, {x, y + dip - 0.2 * size}, size * (0.85 + 0.03 * scatter(number, 4, 8)),
                   petalColour(number));
    }
}

void drawAppleTree(QPainter &painter)
{
    fillRect(painter, QRectF(72, 330, 140, 20), QColor(0, 40, 0, 55), 10);
    drawTree(painter, {140, 340}, 290, QColor(0x58a04a));
    for (int apple = 0; apple < 16; ++apple) {
        const QPointF place(80 + scatter(apple, 1, 120), 78 + scatter(apple, 2, 120));
        fillDisc(painter, place, 7, QColor(0xd9433a));
        fillDisc(painter, place + QPointF(-2, -2), 2, QColor(0xf6a49a));
    }
}

void drawDuck(QPainter &painter, QPointF middle)
{
    painter.setBrush(QColor(0xfff6dc));
    painter.drawEllipse(middle, 21, 11);
    fillPolygon(painter,
                {middle + QPointF(-16, -4), middle + QPointF(-31, -13), middle + QPointF(-10, -10)},
                QColor(0xfff6dc));
    fillDisc(painter, middle + QPointF(17, -15), 9, QColor(0x2f7d57));
    fillPolygon(painter,
                {middle + QPointF(24, -18), middle + QPointF(36, -13), middle + QPointF(24, -11)},
                QColor(0xf0a030));
    fillDisc(painter, middle + QPointF(19, -17), 1.8, QColor(0xffffff));
}

void drawPond(QPainter &painter, double seconds)
{
    painter.setBrush(QColor(0xb9b2a4));
    painter.drawEllipse(QPointF(420, 318), 142, 38);
    painter.setBrush(QColor(0x6fb3cf));
    painter.drawEllipse(QPointF(420, 318), 132, 32);
    painter.setBrush(QColor(0x8cc8de));
    painter.drawEllipse(QPointF(404, 311), 96, 17);
    drawDuck(painter, {420 + 74 * swing(seconds, 97), 314 + 8 * swing(seconds, 61)});
}

void drawButterfly(QPainter &painter, QPointF middle, QColor wings)
{
    for (const double side : {-1.0, 1.0}) {
        fillDisc(painter, middle + QPointF(side * 8, -5), 8, wings);
        fillDisc(painter, middle + QPointF(side * 6, 5), 5.5, wings.darker(112));
    }
    drawLine(painter, middle + QPointF(0, -8), middle + QPointF(0, 8), 2.5, QColor(0x33302e));
}

} // namespace

void drawGarden(QPainter &painter, double seconds)
{
    fillBand(painter, 0, 260, QColor(0x7cc3ee), QColor(0xeaf6ee));
    drawCloud(painter, {alongRoad(seconds, 2, 900) - 130, 62}, 40, QColor(255, 255, 255, 215));
    drawCloud(painter, {alongRoad(seconds + 300, 1.4, 900) - 130, 112}, 27,
              QColor(255, 255, 255, 190));
    drawHills(painter, {.y = 186, .height = 14, .wavelength = 150, .phase = 20}, QColor(0x6fae6a));
    drawFence(painter);
    fillBand(painter, 254, kSceneHeight, QColor(0x9bd07a), QColor(0x5da04d));
    drawPond(painter, seconds);
    drawAppleTree(painter);
    drawBed(painter, 230, 620, 274, 7);
    drawBed(painter, 16, 624, 424, 13);
    drawButterfly(painter, {330 + 250 * swing(seconds, 143), 240 + 60 * swing(seconds, 47)},
                  QColor(0xf08a3c));
    drawButterfly(painter, {380 + 200 * swing(seconds + 20, 107), 330 + 50 * swing(seconds, 71)},
                  QColor(0x5b8def));
}

} // namespace velmora::demo
