// Shapes and motions shared by several scenes. Shapes expect a painter without an outline and leave
// it so.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRectF>

#include <initializer_list>

namespace velmora::demo {

constexpr double kSceneWidth = 640;
constexpr double kSceneHeight = 480;

/// Position on a road of this length (pixels) that wraps around: 0 up to length.
[[nodiscard]] double alongRoad(double seconds, double pixelsPerSecond, double length);

/// Swings between -1 and 1, once in so many seconds.
[[nodiscard]] double swing(double seconds, double period);

/// A number that looks random but is the same for the same pair; below limit.
[[nodiscard]] int scatter(int first, int second, int limit);

/// Fills the full width between top and bottom (y) from one colour to the other.
void fillBand(QPainter &painter, double top, double bottom, QColor from, QColor to);

void fillRect(QPainter &painter, const QRectF &rect, QColor colour, double cornerRadius = 0);

void fillDisc(QPainter &painter, QPointF centre, double radius, QColor colour);

void fillPolygon(QPainter &painter, std::initializer_list<QPointF> corners, QColor colour);

/// A line from one point to the other.
void drawLine(QPainter &painter, QPointF from, QPointF to, double width, QColor colour);

/// Soft light around a point, fading to nothing at the radius.
void drawGlow(QPainter &painter, QPointF centre, double radius, QColor colour);

/// A cloud about three times as wide as its size (pixels) around the centre.
void drawCloud(QPainter &painter, QPointF centre, double size, QColor colour);

struct Ridge
{
    double y;          // of the middle of its slope
    double height;     // of a hill over the middle
    double wavelength; // pixels from hill to hill
    double phase;      // pixels by which the hills are shifted to the left
};

/// y of the ridge at x.
[[nodiscard]] double ridgeAt(const Ridge &ridge, double x);

/// Rounded hills from the ridge down to the picture's bottom.
void drawHills(QPainter &painter, const Ridge &ridge, QColor colour);

/// A tree with a round crown; foot: the base of the trunk.
void drawTree(QPainter &painter, QPointF foot, double height, QColor leaves);

/// A fir; foot: the base of the trunk.
void drawFir(QPainter &painter, QPointF foot, double height, QColor needles);

/// A distant bird, wings spread.
void drawBird(QPainter &painter, QPointF centre, double span, QColor colour);

} // namespace velmora::demo
