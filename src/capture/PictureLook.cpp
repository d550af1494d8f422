#include "capture/PictureLook.h"

#include "base/PictureFormat.h"
#include "base/WorkSlice.h"
#include "capture/JpegGrey.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <array>
#include <cstddef>
#include <span>

namespace velmora {
namespace {

constexpr int kAcross = 16;
constexpr int kDown = 9;
constexpr QSize kLeastSize(kAcross * 10,
                           kDown * 10); // of a reduction that the cells are taken from

// A picture decoded in one go holds everything else up and needs at least four bytes a pixel, so
// it may be no larger than a full screen.
constexpr qint64 kMostPixels = qint64{2} * 1024 * 1024;

// The mean of each cell, of lines that come in any order.
class Raster
{
public:
    void add(QSize size, int y, std::span<const unsigned char> line)
    {
        const int down = y * kDown / size.height();
        for (int x = 0; x < size.width(); ++x) {
            Cell &cell = at(x * kAcross / size.width(), down);
            cell.sum += line[static_cast<std::size_t>(x)];
            ++cell.count;
        }
    }

    // Where a picture has fewer points than there are cells, the cells without one are black: the
    // same ones every time.
    [[nodiscard]] QByteArray text() const
    {
        QByteArray grey;
        for (const Cell &cell : cells_) {
            const qint64 mean = cell.count > 0 ? (cell.sum + cell.count / 2) / cell.count : 0;
            grey.append(static_cast<char>(mean));
        }
        return grey.toBase64();
    }

    [[nodiscard]] bool isEmpty() const { return cells_.front().count == 0; }

private:
    struct Cell
    {
        qint64 sum = 0;
        qint64 count = 0;
    };

    Cell &at(int across, int down)
    {
        return cells_[static_cast<std::size_t>(down) * kAcross + static_cast<std::size_t>(across)];
    }

    std::array<Cell, std::size_t{kAcross} * kDown> cells_ = {};
};

QImage decoded(const QByteArray &bytes)
{
    const QByteArray format = pictureFormat(bytes);
    if (format.isEmpty()) {
        return {};
    }
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    const bool isBearable = size.isValid() && qint64{size.width()} * size.height() <= kMostPixels;
    return isBearable ? reader.read().convertToFormat(QImage::Format_Grayscale8) : QImage();
}

QCoro::Task<Raster> rasterOfJpeg(QByteArray bytes, Clock *clock)
{
    Raster raster;
    JpegGrey jpeg(bytes, kLeastSize);
    WorkSlice slice(*clock);
    int lines = 0;
    while (jpeg.step()) {
        if (jpeg.lineNumber() >= lines) {
            raster.add(jpeg.size(), lines++, jpeg.line());
        }
        co_await letEventsRun(&slice, clock);
    }
    co_return raster;
}

QCoro::Task<Raster> rasterOfOther(QByteArray bytes, Clock *clock)
{
    Raster raster;
    const QImage picture = decoded(bytes);
    WorkSlice slice(*clock);
    for (int y = 0; y < picture.height(); ++y) {
        raster.add(picture.size(), y,
                   {picture.constScanLine(y), static_cast<std::size_t>(picture.width())});
        co_await letEventsRun(&slice, clock);
    }
    co_return raster;
}

} // namespace

QCoro::Task<QByteArray> lookOf(QByteArray picture, Clock *clock)
{
    Raster raster = co_await rasterOfJpeg(picture, clock);
    if (raster.isEmpty()) {
        raster = co_await rasterOfOther(picture, clock);
    }
    co_return raster.isEmpty() ? QByteArray() : raster.text();
}

} // namespace velmora
