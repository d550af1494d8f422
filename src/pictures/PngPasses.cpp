#include "pictures/PngPasses.h"

#include <QPoint>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kInterlaceAt = 28; // the last byte of the header
constexpr int kCoarsest = 8;     // distance of the points in the first pass

// Each pass adds lines between those there are, or points between those of a line.
QPoint earlierPoint(int x, int y)
{
    for (int step = 1; step < kCoarsest; step *= 2) {
        if ((y & step) != 0) {
            return {x, y - step};
        }
        if ((x & step) != 0) {
            return {x - step, y};
        }
    }
    return {x, y};
}

void fillLine(QImage &picture, const QImage &other, int y)
{
    const qsizetype pointBytes = picture.depth() / 8;
    uchar *const line = picture.scanLine(y);
    const uchar *const otherLine = other.constScanLine(y);
    for (int x = 0; x < picture.width(); ++x) {
        uchar *const point = line + x * pointBytes;
        if (!std::equal(point, point + pointBytes, otherLine + x * pointBytes)) {
            const QPoint from = earlierPoint(x, y);
            std::copy_n(picture.constScanLine(from.y()) + from.x() * pointBytes, pointBytes, point);
        }
    }
}

} // namespace

bool comesInPasses(const QByteArray &bytes)
{
    return bytes.size() > kInterlaceAt && bytes.at(kInterlaceAt) == 1;
}

QImage withPassesFilled(QImage picture, const QImage &other)
{
    const bool isAlike = picture.size() == other.size() && picture.format() == other.format();
    if (!isAlike || picture.depth() < 8) {
        return picture; // with only two colours it is seldom more than a drawing
    }
    for (int y = 0; y < picture.height(); ++y) {
        fillLine(picture, other, y);
    }
    return picture;
}

} // namespace velmora
