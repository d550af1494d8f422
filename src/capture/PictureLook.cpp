#include "capture/PictureLook.h"

#include "base/OwnLibrary.h"
#include "base/WorkSlice.h"
#include "capture/GreyLibrary.h"
#include "capture/JpegGrey.h"

#include <QSize>

#include <array>
#include <cstddef>
#include <span>

namespace velmora {
namespace {

constexpr int kAcross = 16;
constexpr int kDown = 9;
constexpr QSize kLeastSize(kAcross * 10,
                           kDown * 10); // of a reduction that the cells are taken from

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

struct Greys
{
    QSize size;
    QByteArray lines; // one after another
};

void keep(void *user, int width, int height, std::size_t step, const unsigned char *lines)
{
    auto *const greys = static_cast<Greys *>(user);
    greys->size = {width, height};
    greys->lines.reserve(qsizetype{width} * height);
    for (int y = 0; y < height; ++y, lines += step) {
        greys->lines.append(reinterpret_cast<const char *>(lines), width);
    }
}

// Throws NoLibrary.
DecodeGreys greyDecoder()
{
    return reinterpret_cast<DecodeGreys>(
        libraryFunction(QLatin1String(kGreyLibrary), kDecodeGreys));
}

Greys decoded(const QByteArray &bytes)
{
    Greys greys;
    try {
        const DecodeGreys decode = greyDecoder();
        decode(bytes.constData(), static_cast<std::size_t>(bytes.size()), &keep, &greys);
    } catch (const NoLibrary &) {
        return {}; // lookFault() says why
    }
    return greys;
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
    const Greys greys = decoded(bytes);
    const auto width = static_cast<std::size_t>(greys.size.width());
    const auto *line = reinterpret_cast<const unsigned char *>(greys.lines.constData());
    WorkSlice slice(*clock);
    for (int y = 0; y < greys.size.height(); ++y, line += width) {
        raster.add(greys.size, y, {line, width});
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

QString lookFault()
{
    try {
        greyDecoder();
    } catch (const NoLibrary &missing) {
        return QString::fromLocal8Bit(missing.what());
    }
    return {};
}

} // namespace velmora
