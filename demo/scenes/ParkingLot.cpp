// A parking lot from above: cars come and go in two rows of bays, and one drives along the lane.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <array>

namespace velmora::demo {
namespace {

constexpr int kBays = 8;
constexpr double kBayWidth = 68;
constexpr double kBayLength = 118;
constexpr double kLotLeft = 48;
constexpr double kUpperRow = 52;
constexpr double kLowerRow = 274;
constexpr double kStay = 120;       // seconds; the shortest time that a car or a gap stays
constexpr double kDriveSpeed = 7.3; // pixels per second
constexpr double kDriveWay = 900;
constexpr std::array<QRgb, 7> kPaints = {0xc0392b, 0x2e6fb0, 0xf1efe9, 0x3b4148,
                                         0x9aa3ab, 0x2f8a63, 0xe0b23a};

// Seen from above, nose up, around the origin.
void drawCar(QPainter &painter, QColor paint)
{
    fillRect(painter, QRectF(-19, -40, 44, 88), QColor(0, 0, 0, 60), 11);
    fillRect(painter, QRectF(-22, -44, 44, 88), paint, 11);
    fillPolygon(painter, {{-18, -18}, {18, -18}, {14, -6}, {-14, -6}}, QColor(0x2b3a46));
    fillPolygon(painter, {{-15, 26}, {15, 26}, {18, 35}, {-18, 35}}, QColor(0x2b3a46));
    fillRect(painter, QRectF(-15, -5, 30, 30), paint.lighter(112), 5);
    fillRect(painter, QRectF(-19, -43, 9, 5), QColor(0xfff6c8), 2);
    fillRect(painter, QRectF(10, -43, 9, 5), QColor(0xfff6c8), 2);
    fillRect(painter, QRectF(-19, 39, 9, 4), QColor(0xe2473d), 2);
    fillRect(painter, QRectF(10, 39, 9, 4), QColor(0xe2473d), 2);
}

void placeCar(QPainter &painter, QPointF middle, double turn, int number)
{
    painter.save();
    painter.translate(middle);
    painter.rotate(turn);
    drawCar(painter,
            QColor(kPaints.at(static_cast<std::size_t>(scatter(number, 3, kPaints.size())))));
    painter.restore();
}

void drawGround(QPainter &painter)
{
    painter.fillRect(QRectF(0, 0, kSceneWidth, kSceneHeight), QColor(0x86b567));
    for (int tuft = 0; tuft < 260; ++tuft) {
        const QPointF place(scatter(tuft, 1, 640), scatter(tuft, 2, 480));
        drawLine(painter, place, place + QPointF(3, -5), 1.6, QColor(0x73a357));
    }
    fillRect(painter, QRectF(26, 38, 588, 368), QColor(0xbdb8ad), 20);
    fillRect(painter, QRectF(-10, 180, 660, 84), QColor(0xbdb8ad));
    fillRect(painter, QRectF(32, 44, 576, 356), QColor(0x666b72), 16);
    fillRect(painter, QRectF(-10, 186, 660, 72), QColor(0x666b72));
    for (int speck = 0; speck < 420; ++speck) {
        const QPointF place(40 + scatter(speck, 5, 560), 50 + scatter(speck, 6, 344));
        fillDisc(painter, place, 1, QColor(255, 255, 255, 26));
    }
}

void drawBays(QPainter &painter, double top)
{
    for (int line = 0; line <= kBays; ++line) {
        fillRect(painter, QRectF(kLotLeft + line * kBayWidth - 1.5, top, 3, kBayLength),
                 QColor(0xf1eee4));
    }
}

// Each bay changes at a time of its own, so that not all cars leave at once.
void parkCars(QPainter &painter, double top, double turn, int row, double seconds)
{
    for (int bay = 0; bay < kBays; ++bay) {
        const int place = row * kBays + bay;
        const int stay = static_cast<int>((seconds + scatter(place, 11, 120)) / kStay);
        if (scatter(place, stay, 3) > 0) {
            const QPointF middle(kLotLeft + (bay + 0.5) * kBayWidth, top + kBayLength / 2);
            placeCar(painter, middle, turn, place * 1000 + stay % 1000);
        }
    }
}

void drawArrow(QPainter &painter, double left)
{
    constexpr double kLaneMiddle = 222;
    fillRect(painter, QRectF(left, kLaneMiddle - 3, 40, 6), QColor(255, 255, 255, 120));
    fillPolygon(
        painter,
        {{left + 38, kLaneMiddle - 12}, {left + 58, kLaneMiddle}, {left + 38, kLaneMiddle + 12}},
        QColor(255, 255, 255, 120));
}

void drawCrown(QPainter &painter, QPointF middle)
{
    fillDisc(painter, middle + QPointF(7, 9), 32, QColor(0, 30, 0, 60));
    fillDisc(painter, middle, 32, QColor(0x3f7f3f));
    fillDisc(painter, middle + QPointF(-6, -7), 22, QColor(0x539a4c));
    fillDisc(painter, middle + QPointF(-10, -12), 11, QColor(0x6ab45c));
}

} // namespace

void drawParkingLot(QPainter &painter, double seconds)
{
    drawGround(painter);
    drawBays(painter, kUpperRow);
    drawBays(painter, kLowerRow);
    drawArrow(painter, 130);
    drawArrow(painter, 420);
    parkCars(painter, kUpperRow, 0, 0, seconds);
    parkCars(painter, kLowerRow, 180, 1, seconds);
    const int driver = static_cast<int>(seconds * kDriveSpeed / kDriveWay);
    placeCar(painter, {alongRoad(seconds, kDriveSpeed, kDriveWay) - 120, 222}, 90.0, driver);
    for (const double x : {14.0, 186.0, 330.0, 500.0, 628.0}) {
        drawCrown(painter, {x, 428});
    }
    drawCrown(painter, {8, 26});
    drawCrown(painter, {634, 22});
}

} // namespace velmora::demo
