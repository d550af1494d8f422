// A street in a small town: a row of houses whose lights come and go, and cars in both directions.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <array>

namespace velmora::demo {
namespace {

constexpr double kPavementTop = 316;
constexpr double kRoadTop = 344;
constexpr double kRoadMiddle = 394;
constexpr double kLightsChange = 30; // seconds

struct House
{
    double left = 0;
    double width = 0;
    double height = 0;
    QRgb wall = 0;
    QRgb roof = 0;
};

constexpr std::array<House, 6> kHouses = {{
    {.left = -10, .width = 112, .height = 170, .wall = 0xe8b98a, .roof = 0x8c4a3c},
    {.left = 102, .width = 96, .height = 214, .wall = 0xc9d6c3, .roof = 0x5f6f78},
    {.left = 198, .width = 118, .height = 156, .wall = 0xe9dcb4, .roof = 0xa2543f},
    {.left = 316, .width = 94, .height = 232, .wall = 0xd98f7a, .roof = 0x6a4444},
    {.left = 410, .width = 120, .height = 178, .wall = 0xa9c4d6, .roof = 0x55616e},
    {.left = 530, .width = 120, .height = 200, .wall = 0xf0d5a0, .roof = 0x95503d},
}};

enum class Heading { Left, Right };

void drawWindows(QPainter &painter, const House &house, int number, int moment)
{
    constexpr int kColumns = 3;
    constexpr double kWide = 18;
    const double top = kPavementTop - house.height + 22;
    const double gap = (house.width - kColumns * kWide) / (kColumns + 1);
    const int rows = static_cast<int>((house.height - 84) / 44) + 1;
    for (int i = 0; i < rows * kColumns; ++i) {
        const double left = house.left + gap + (i % kColumns) * (kWide + gap);
        const int row = i / kColumns;
        const QRectF pane(left, top + row * 44.0, kWide, 28);
        const bool lit = scatter(number * 100 + i, moment, 4) == 0;
        fillRect(painter, pane.adjusted(-3, -3, 3, 3), QColor(0xfaf6ee), 2);
        fillRect(painter, pane, QColor(lit ? 0xffd873 : 0x5c7f96), 1);
        fillRect(painter, QRectF(pane.left(), pane.center().y() - 1, kWide, 2), QColor(0xfaf6ee));
    }
}

void drawHouse(QPainter &painter, const House &house, int number, int moment)
{
    const double eaves = kPavementTop - house.height;
    const double right = house.left + house.width;
    fillPolygon(painter,
                {{house.left - 5, eaves},
                 {house.left + 0.2 * house.width, eaves - 40},
                 {right - 0.2 * house.width, eaves - 40},
                 {right + 5, eaves}},
                QColor(house.roof));
    fillRect(painter, QRectF(house.left, eaves, house.width, house.height), QColor(house.wall));
    fillRect(painter, QRectF(house.left, eaves, house.width, 6), QColor(house.wall).darker(118));
    drawWindows(painter, house, number, moment);
    const QRectF door(house.left + house.width / 2 - 12, kPavementTop - 42, 24, 42);
    fillRect(painter, door.adjusted(-3, -3, 3, 0), QColor(0xfaf6ee), 2);
    fillRect(painter, door, QColor(house.roof).darker(115), 2);
}

// Drawn heading right, with the rear bumper at (0, 0) on the road.
void drawCarBody(QPainter &painter, QColor paint)
{
    fillRect(painter, QRectF(2, -4, 116, 8), QColor(0, 0, 0, 70), 4);
    fillPolygon(painter, {{24, -30}, {38, -50}, {78, -50}, {98, -30}}, paint.darker(108));
    fillPolygon(painter, {{31, -31}, {41, -46}, {57, -46}, {57, -31}}, QColor(0xcfe6f2));
    fillPolygon(painter, {{61, -31}, {61, -46}, {76, -46}, {89, -31}}, QColor(0xcfe6f2));
    fillRect(painter, QRectF(0, -32, 120, 24), paint, 9);
    fillRect(painter, QRectF(113, -27, 7, 8), QColor(0xfff3b0), 3);
    fillRect(painter, QRectF(0, -27, 6, 8), QColor(0xd6342c), 3);
    for (const double wheel : {27.0, 93.0}) {
        fillDisc(painter, {wheel, -9}, 12, QColor(0x23262b));
        fillDisc(painter, {wheel, -9}, 5.5, QColor(0xb9c0c7));
    }
}

// front: how far the car's front has come on its way through the picture.
void drawCar(QPainter &painter, double front, double wheels, QColor paint, Heading heading)
{
    painter.save();
    if (heading == Heading::Right) {
        painter.translate(front - 120, wheels);
    } else {
        painter.translate(kSceneWidth - front + 120, wheels);
        painter.scale(-1, 1);
    }
    drawCarBody(painter, paint);
    painter.restore();
}

void drawRoad(QPainter &painter)
{
    constexpr double kDash = 46;
    fillRect(painter, QRectF(0, kPavementTop, kSceneWidth, kRoadTop - kPavementTop),
             QColor(0xc2bcb2));
    fillRect(painter, QRectF(0, kRoadTop - 6, kSceneWidth, 6), QColor(0x989289));
    fillBand(painter, kRoadTop, kSceneHeight, QColor(0x5b6067), QColor(0x484c53));
    for (int dash = 0; dash < 7; ++dash) {
        fillRect(painter, QRectF(10 + 2 * dash * kDash, kRoadMiddle - 2, kDash, 4),
                 QColor(0xe9e6dc), 2);
    }
}

} // namespace

void drawStreet(QPainter &painter, double seconds)
{
    constexpr double kWay = 1000;
    fillBand(painter, 0, kPavementTop, QColor(0x6fb4e6), QColor(0xe6f2f7));
    drawCloud(painter, {alongRoad(seconds, 1.5, 900) - 130, 48}, 42, QColor(255, 255, 255, 225));
    drawCloud(painter, {alongRoad(seconds + 400, 1, 900) - 130, 90}, 28,
              QColor(255, 255, 255, 190));
    const int moment = static_cast<int>(seconds / kLightsChange);
    int number = 0;
    for (const House &house : kHouses) {
        drawHouse(painter, house, number++, moment);
    }
    drawRoad(painter);
    for (const double x : {102.0, 318.0, 530.0}) {
        drawTree(painter, {x, kRoadTop - 8}, 104, QColor(0x5f9e4d));
    }
    drawCar(painter, alongRoad(seconds, 47, kWay), 384, QColor(0x2f74c0), Heading::Left);
    drawCar(painter, alongRoad(seconds + 9, 47, kWay), 384, QColor(0xf2efe9), Heading::Left);
    drawCar(painter, alongRoad(seconds + 4, 63, kWay), 436, QColor(0xd1483f), Heading::Right);
}

} // namespace velmora::demo
