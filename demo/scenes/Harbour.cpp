// A harbour seen from the quay: a lighthouse, sailing boats that cross the bay, and gulls.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

namespace velmora::demo {
namespace {

constexpr double kHorizon = 214;

void drawLighthouse(QPainter &painter, double seconds)
{
    constexpr double kMiddle = 540;
    fillPolygon(
        painter,
        {{452, 262}, {486, 226}, {520, 214}, {566, 210}, {612, 222}, {640, 240}, {640, 270}},
        QColor(0x6d6a66));
    fillPolygon(painter, {{470, 262}, {510, 238}, {580, 232}, {640, 252}, {640, 270}},
                QColor(0x5b5855));
    for (int stripe = 0; stripe < 6; ++stripe) {
        const double top = 100 + stripe * 20;
        const double half = 13 + stripe * 1.8;
        fillPolygon(painter,
                    {{kMiddle - half, top},
                     {kMiddle + half, top},
                     {kMiddle + half + 1.8, top + 20},
                     {kMiddle - half - 1.8, top + 20}},
                    QColor(stripe % 2 == 0 ? 0xf7f3ea : 0xcf4436));
    }
    fillRect(painter, QRectF(kMiddle - 18, 94, 36, 6), QColor(0x3a3f46), 2);
    fillRect(painter, QRectF(kMiddle - 9, 72, 18, 22), QColor(0xffe9a3), 2);
    fillPolygon(painter, {{kMiddle - 13, 73}, {kMiddle + 13, 73}, {kMiddle, 56}}, QColor(0xcf4436));
    drawGlow(painter, {kMiddle, 83}, 30 + 14 * swing(seconds, 45), QColor(255, 240, 180, 190));
}

// hull: where the middle of the waterline is.
void drawBoat(QPainter &painter, QPointF hull, double size, QColor sail)
{
    painter.save();
    painter.translate(hull);
    painter.scale(size, size);
    fillPolygon(painter, {{-34, 10}, {34, 10}, {22, 22}, {-22, 22}}, QColor(255, 255, 255, 45));
    fillPolygon(painter, {{3, -72}, {3, -14}, {40, -14}}, sail);
    fillPolygon(painter, {{-3, -66}, {-3, -14}, {-28, -14}}, sail.darker(108));
    drawLine(painter, {0, -76}, {0, -8}, 2.5, QColor(0x5b4636));
    fillPolygon(painter, {{-38, -9}, {42, -9}, {30, 8}, {-28, 8}}, QColor(0x7b3f2e));
    fillPolygon(painter, {{-38, -9}, {42, -9}, {40, -5}, {-36, -5}}, QColor(0xf2e6d2));
    painter.restore();
}

void drawWaves(QPainter &painter, double seconds)
{
    for (int i = 0; i < 70; ++i) {
        const double y = kHorizon + 12 + scatter(i, 1, 190);
        const double depth = (y - kHorizon) / 200;
        const double x = alongRoad(seconds + scatter(i, 2, 9000), 3 + 6 * depth, 740) - 50;
        drawLine(painter, {x, y}, {x + 10 + 26 * depth, y}, 1 + 1.4 * depth,
                 QColor(255, 255, 255, 75));
    }
}

void drawQuay(QPainter &painter)
{
    fillRect(painter, QRectF(0, 398, kSceneWidth, 82), QColor(0x8a6a4c));
    for (int plank = 0; plank < 11; ++plank) {
        const int shade = 96 + scatter(plank, 7, 12);
        fillRect(painter, QRectF(plank * 60.0 - 8, 402, 57, 78), QColor(0x9c7a58).darker(shade));
    }
    fillRect(painter, QRectF(0, 394, kSceneWidth, 9), QColor(0x6f5239));
    for (const double x : {70.0, 330.0, 590.0}) {
        fillRect(painter, QRectF(x - 11, 366, 22, 46), QColor(0x3d4249), 5);
        fillRect(painter, QRectF(x - 16, 360, 32, 12), QColor(0x525962), 6);
    }
}

void drawGulls(QPainter &painter, double seconds)
{
    for (int i = 0; i < 4; ++i) {
        const double x = alongRoad(seconds + i * 11, 17 + 3 * i, 760) - 60;
        const double y = 84 + i * 22 + 12 * swing(seconds + i * 3, 23);
        drawBird(painter, {x, y}, 20 + 4 * i, QColor(0xfdfdfb));
    }
}

} // namespace

void drawHarbour(QPainter &painter, double seconds)
{
    fillBand(painter, 0, kHorizon, QColor(0x4f9bd6), QColor(0xfbe3c0));
    drawGlow(painter, {150, 176}, 150, QColor(255, 236, 180, 190));
    fillDisc(painter, {150, 176}, 24, QColor(0xfff4d2));
    drawHills(painter, {.y = 200, .height = 16, .wavelength = 420, .phase = 60}, QColor(0x8fa9b8));
    drawHills(painter, {.y = 210, .height = 10, .wavelength = 300, .phase = 190}, QColor(0x6f93a0));
    fillBand(painter, kHorizon, kSceneHeight, QColor(0x7fb9cf), QColor(0x1f5f86));
    drawWaves(painter, seconds);
    drawLighthouse(painter, seconds);
    drawBoat(painter, {alongRoad(seconds, 3.1, 800) - 80, 250}, 0.5, QColor(0xfbf7ee));
    drawBoat(painter, {720 - alongRoad(seconds + 100, 6.3, 800), 296 + 2 * swing(seconds, 13)}, 0.9,
             QColor(0xf4c95d));
    drawBoat(painter, {alongRoad(seconds + 60, 8.7, 860) - 110, 350 + 3 * swing(seconds, 17)}, 1.3,
             QColor(0xfbf7ee));
    drawGulls(painter, seconds);
    drawQuay(painter);
}

} // namespace velmora::demo
