// The sky over hills: a sun that crosses it in ten minutes, followed by dusk and stars.
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmora::demo {
namespace {

constexpr double kDay = 600; // seconds from one sunrise to the next

QColor mix(QColor from, QColor to, double part)
{
    const auto channel = [part](int a, int b) { return a + static_cast<int>((b - a) * part); };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()),
            channel(from.blue(), to.blue())};
}

struct Sun
{
    QPointF place;
    double light = 0; // 0: night, 1: full day
    double glow = 0;  // 1: at the horizon, red
};

// The sun moves in a circle whose lower part is behind the hills.
Sun sunAt(double seconds)
{
    const double angle = std::fmod(seconds, kDay) / kDay * 2 * std::numbers::pi;
    const double height = 0.25 + 0.75 * std::sin(angle);
    return {.place = {320 - 290 * std::cos(angle), 350 - 280 * height},
            .light = std::clamp(0.35 + 2 * height, 0.0, 1.0),
            .glow = std::clamp(1.1 - 2.2 * std::abs(height), 0.0, 1.0)};
}

void drawStars(QPainter &painter, double light)
{
    const int alpha = static_cast<int>(230 * std::clamp(1 - 2.5 * light, 0.0, 1.0));
    for (int star = 0; star < 90 && alpha > 0; ++star) {
        const QPointF place(scatter(star, 1, 640), scatter(star, 2, 300));
        fillDisc(painter, place, 0.7 + 0.2 * scatter(star, 3, 5), QColor(255, 255, 240, alpha));
    }
}

void drawClouds(QPainter &painter, double seconds, const Sun &sun)
{
    const QColor lit = mix(QColor(0x46506e), QColor(0xffffff), sun.light);
    QColor colour = mix(lit, QColor(0xffb98a), 0.7 * sun.glow);
    colour.setAlpha(215);
    for (int i = 0; i < 5; ++i) {
        const double x = alongRoad(seconds + i * 173, 2.2 + 0.7 * i, 900) - 130;
        drawCloud(painter, {x, 60.0 + scatter(i, 8, 5) * 34}, 24 + 7.0 * i, colour);
    }
}

void drawLand(QPainter &painter, double light)
{
    const double bright = 0.2 + 0.8 * light;
    const auto shade = [bright](QRgb day) { return mix(QColor(0x0d1524), QColor(day), bright); };
    drawHills(painter, {.y = 352, .height = 26, .wavelength = 520, .phase = 0}, shade(0x7fa8a0));
    drawHills(painter, {.y = 384, .height = 22, .wavelength = 390, .phase = 150}, shade(0x6d9c68));
    drawHills(painter, {.y = 420, .height = 16, .wavelength = 610, .phase = 330}, shade(0x4d8048));
    for (const double x : {84.0, 126.0, 452.0}) {
        drawTree(painter, {x, 424}, 62 + 0.05 * x, shade(0x3f7040));
    }
}

} // namespace

void drawSky(QPainter &painter, double seconds)
{
    const Sun sun = sunAt(seconds);
    const QColor top = mix(QColor(0x0b1433), QColor(0x3f8fdc), sun.light);
    const QColor day = mix(QColor(0x2a3560), QColor(0xd5ecf8), sun.light);
    fillBand(painter, 0, 380, top, mix(day, QColor(0xff9a5a), 0.8 * sun.glow));
    drawStars(painter, sun.light);
    drawGlow(painter, sun.place, 190, QColor(255, 226, 150, 170));
    fillDisc(painter, sun.place, 32, mix(QColor(0xfff3c4), QColor(0xff7d45), sun.glow));
    drawClouds(painter, seconds, sun);
    for (int bird = 0; bird < 5; ++bird) {
        const double x = alongRoad(seconds + bird * 2, 9, 800) - 60;
        const double y = 210 + 14 * std::abs(bird - 2);
        drawBird(painter, {x, y}, 18, mix(QColor(0x0d1524), QColor(0x3b4656), sun.light));
    }
    drawLand(painter, sun.light);
}

} // namespace velmora::demo
