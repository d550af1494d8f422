// A mountain lake in the evening: snowy peaks, firs, and a cable car on its way between two
// stations.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

namespace velmora::demo {
namespace {

constexpr double kShore = 330;

struct Peak
{
    QPointF top;
    double halfWidth = 0;
    QRgb rock = 0;
};

void drawPeak(QPainter &painter, const Peak &peak)
{
    const QPointF top = peak.top;
    const double height = kShore - top.y();
    const double slope = peak.halfWidth / height;
    const double snow = 0.36 * height;
    const auto at = [&](double part, double down) {
        return top + QPointF(part * slope * down, down);
    };
    fillPolygon(painter, {top, at(1, height), at(-1, height)}, QColor(peak.rock));
    fillPolygon(
        painter,
        {top, at(1, height), at(0.1, height), at(0.25, 0.55 * height), at(-0.1, 0.3 * height)},
        QColor(peak.rock).darker(118));
    fillPolygon(painter,
                {top, at(1, snow), at(0.55, 0.78 * snow), at(0.3, 1.25 * snow), at(0, 0.85 * snow),
                 at(-0.35, 1.3 * snow), at(-0.6, 0.8 * snow), at(-1, 0.95 * snow)},
                QColor(0xfbf9f6));
    fillPolygon(
        painter,
        {top, at(1, snow), at(0.55, 0.78 * snow), at(0.3, 1.25 * snow), at(-0.05, 0.5 * snow)},
        QColor(0xd9deea));
}

void drawLake(QPainter &painter, double seconds)
{
    fillBand(painter, kShore, kSceneHeight, QColor(0xc79aa6), QColor(0x2f5480));
    for (int i = 0; i < 46; ++i) {
        const double y = kShore + 8 + scatter(i, 1, 110);
        const double x = alongRoad(seconds + scatter(i, 2, 5000), 1.7, 760) - 60;
        drawLine(painter, {x, y}, {x + 14.0 + scatter(i, 3, 34), y}, 1.6,
                 QColor(255, 235, 225, 70));
    }
}

void drawCableCar(QPainter &painter, double seconds)
{
    const QPointF valley(36, 316);
    const QPointF summit(442, 106);
    const double way = 0.5 + 0.5 * swing(seconds, 420);
    const QPointF hook = valley + (summit - valley) * way;
    drawLine(painter, valley, summit, 1.6, QColor(0x3c3f48));
    drawLine(painter, hook, hook + QPointF(0, 16), 2, QColor(0x3c3f48));
    fillRect(painter, QRectF(hook.x() - 17, hook.y() + 15, 34, 26), QColor(0xd8402f), 6);
    fillRect(painter, QRectF(hook.x() - 13, hook.y() + 19, 26, 10), QColor(0xfdf0d0), 3);
    fillRect(painter, QRectF(summit.x() - 6, summit.y() - 12, 30, 20), QColor(0x5a4a48), 2);
    fillPolygon(painter,
                {{summit.x() - 12, summit.y() - 12},
                 {summit.x() + 30, summit.y() - 12},
                 {summit.x() + 9, summit.y() - 26}},
                QColor(0x8a3d32));
    fillRect(painter, QRectF(8, 304, 48, 30), QColor(0x7a5a44), 2);
    fillPolygon(painter, {{0, 306}, {64, 306}, {32, 282}}, QColor(0x8a3d32));
}

void drawFirs(QPainter &painter)
{
    for (int i = 0; i < 26; ++i) {
        const double x = 70 + i * 24.0 + scatter(i, 4, 14);
        drawFir(painter, {x, 338.0 + scatter(i, 6, 5)}, 34.0 + scatter(i, 5, 22), QColor(0x38594f));
    }
    for (int i = 0; i < 7; ++i) {
        const double x = i < 3 ? 6 + i * 52.0 : 420 + (i - 3) * 62.0;
        drawFir(painter, {x, 462}, 120.0 + scatter(i, 7, 60), QColor(0x23443e));
    }
}

} // namespace

void drawMountain(QPainter &painter, double seconds)
{
    fillBand(painter, 0, kShore, QColor(0x5c7fbd), QColor(0xffcfae));
    drawGlow(painter, {560, 250}, 210, QColor(255, 210, 150, 200));
    drawCloud(painter, {alongRoad(seconds, 1.1, 900) - 130, 70}, 36, QColor(255, 226, 214, 205));
    drawCloud(painter, {alongRoad(seconds + 500, 0.8, 900) - 130, 120}, 26,
              QColor(255, 226, 214, 180));
    drawPeak(painter, {.top = {110, 150}, .halfWidth = 190, .rock = 0x8b93b4});
    drawPeak(painter, {.top = {580, 140}, .halfWidth = 200, .rock = 0x8b93b4});
    drawPeak(painter, {.top = {300, 52}, .halfWidth = 270, .rock = 0x6c7799});
    drawPeak(painter, {.top = {452, 100}, .halfWidth = 190, .rock = 0x626d8f});
    drawLake(painter, seconds);
    drawCableCar(painter, seconds);
    drawFirs(painter);
}

} // namespace velmora::demo
