#include "pictures/PictureScaler.h"

#include "pictures/ScaleAreas.h"

#include <array>
#include <cstring>
#include <type_traits>
#include <vector>

namespace velmora {
namespace {

constexpr std::size_t kChannels = 4;
constexpr quint16 kHalf = ScaleAreas::kWhole / 2; // rounds the sum of an area
constexpr std::size_t kBlock = 32;                // channels whose sums stay in registers

// A line of pixels with 16 bits for each channel, so that sums fit, and one pixel to spare.
using WideLine = std::vector<quint16>;

/// The lines of a picture that make up one of the smaller picture.
struct Lines
{
    const uchar *bytes;
    qsizetype stride;
    std::size_t channels;
    int count;
    const quint16 *weights; ///< of each line
};

template <typename Size>
void averageBlock(const Lines &lines, std::size_t at, Size size, WideLine &to)
{
    std::array<quint16, kBlock> sums;
    sums.fill(kHalf);
    const uchar *line = lines.bytes + at;
    for (int i = 0; i < lines.count; ++i, line += lines.stride) {
        const quint16 weight = lines.weights[i];
        for (std::size_t k = 0; k < size; ++k) {
            sums[k] = static_cast<quint16>(sums[k] + line[k] * weight);
        }
    }
    for (std::size_t k = 0; k < size; ++k) {
        to[at + k] = sums[k] / ScaleAreas::kWhole;
    }
}

void averageLines(const Lines &lines, WideLine &to)
{
    std::size_t at = 0;
    for (; at + kBlock <= lines.channels; at += kBlock) {
        averageBlock(lines, at, std::integral_constant<std::size_t, kBlock>{}, to);
    }
    averageBlock(lines, at, lines.channels - at, to);
}

// Two pixels beside each other, or their weights: one instruction for eight channels.
using Pair = quint16 __attribute__((vector_size(16)));
using Pixels = quint64 __attribute__((vector_size(16)));

Pair pairAt(const quint16 *channels)
{
    Pair pair;
    std::memcpy(&pair, channels, sizeof pair);
    return pair;
}

/// The weights of all areas, once for each channel, filled up to whole pairs.
std::vector<quint16> pairWeights(const ScaleAreas &areas, int size)
{
    const std::size_t missing = kChannels * static_cast<std::size_t>(areas.length() % 2);
    std::vector<quint16> weights;
    for (int x = 0; x < size; ++x) {
        for (int i = 0; i < areas.length(); ++i) {
            weights.insert(weights.end(), kChannels, areas.weights(x)[i]);
        }
        weights.insert(weights.end(), missing, 0);
    }
    return weights;
}

// The upper bytes of four sums, side by side.
QRgb packed(quint64 sums)
{
    const quint64 bytes = (sums >> 8) & 0x00FF00FF00FF00FF;
    const quint64 pairs = bytes | (bytes >> 8);
    return static_cast<QRgb>((pairs & 0xFFFF) | ((pairs >> 16) & 0xFFFF0000));
}

/// Brings lines of one width to another.
class LineScaler
{
public:
    LineScaler(int from, int to)
        : areas_(from, to)
        , weights_(pairWeights(areas_, to))
        , size_(to)
    {
    }

    void scale(const WideLine &line, QRgb *to) const
    {
        const int pairs = (areas_.length() + 1) / 2;
        if (pairs == 1) {
            scaleBy(std::integral_constant<int, 1>{}, line, to);
        } else if (pairs == 2) {
            scaleBy(std::integral_constant<int, 2>{}, line, to);
        } else {
            scaleBy(pairs, line, to);
        }
    }

private:
    // The usual small numbers of pairs come as constants, which saves a third of the time.
    template <typename Pairs>
    void scaleBy(Pairs pairs, const WideLine &line, QRgb *to) const
    {
        constexpr quint64 kHalves = kHalf * quint64{0x0001000100010001};
        const quint16 *weights = weights_.data();
        for (int x = 0; x < size_; ++x) {
            const quint16 *channels =
                line.data() + kChannels * static_cast<std::size_t>(areas_.first(x));
            Pair sums = {};
            for (int i = 0; i < pairs; ++i, channels += 2 * kChannels, weights += 2 * kChannels) {
                sums += pairAt(channels) * pairAt(weights);
            }
            Pixels pixels;
            std::memcpy(&pixels, &sums, sizeof pixels);
            to[x] = packed(pixels[0] + pixels[1] + kHalves);
        }
    }

    ScaleAreas areas_;
    std::vector<quint16> weights_;
    int size_;
};

} // namespace

QImage averaged(const QImage &image, QSize size)
{
    QImage result(size, image.format());
    if (result.isNull()) {
        return {};
    }
    const LineScaler columns(image.width(), size.width());
    const ScaleAreas rows(image.height(), size.height());
    const std::size_t channels = kChannels * static_cast<std::size_t>(image.width());
    WideLine line(channels + kChannels);
    for (int y = 0; y < size.height(); ++y) {
        averageLines({image.constScanLine(rows.first(y)), image.bytesPerLine(), channels,
                      rows.length(), rows.weights(y)},
                     line);
        columns.scale(line, reinterpret_cast<QRgb *>(result.scanLine(y)));
    }
    return result;
}

} // namespace velmora
