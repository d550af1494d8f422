#include "pictures/PictureScaler.h"

#include "pictures/ScaleAreas.h"

#include <array>
#include <cstring>
#include <type_traits>
#include <vector>

namespace velmora {
namespace {

constexpr std::size_t kChannels = 4;
constexpr quint16 kHalf = ScaleAreas::kWhole / 2; // rounds an area's sum
constexpr std::size_t kBlock = 32;                // channels whose sums stay in registers

std::size_t unsignedOf(int count)
{
    return static_cast<std::size_t>(count);
}

// A line of pixels with 16 bits per channel, so that sums fit, and one spare pixel.
using WideLine = std::vector<quint16>;

/// The lines of a picture that make up one line of the smaller picture.
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
    std::array<quint16, kBlock> sums = {};
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

// Two neighbouring pixels, or their weights: one instruction for eight channels.
using Pair = quint16 __attribute__((vector_size(16)));
using Bytes = quint8 __attribute__((vector_size(8)));

Pair pairAt(const quint16 *channels)
{
    Pair pair;
    std::memcpy(&pair, channels, sizeof pair);
    return pair;
}

// The two sums of each pair belong to one pixel; the result is two pixels.
Bytes joined(Pair first, Pair second)
{
    const Pair sums = __builtin_shufflevector(first, second, 0, 1, 2, 3, 8, 9, 10, 11) +
                      __builtin_shufflevector(first, second, 4, 5, 6, 7, 12, 13, 14, 15);
    return __builtin_convertvector((sums + kHalf) / ScaleAreas::kWhole, Bytes);
}

/// The weights of all areas, once for each channel, padded to whole pairs.
std::vector<quint16> pairWeights(const ScaleAreas &areas, int size)
{
    const std::size_t missing = kChannels * unsignedOf(areas.length() % 2);
    std::vector<quint16> weights;
    for (int x = 0; x < size; ++x) {
        for (int i = 0; i < areas.length(); ++i) {
            weights.insert(weights.end(), kChannels, areas.weights(x)[i]);
        }
        weights.insert(weights.end(), missing, 0);
    }
    return weights;
}

/// Scales lines from one width to another.
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
    // The usual small numbers of pairs are passed as constants, which saves a third of the time.
    template <typename Pairs>
    [[nodiscard]] Pair sumsOf(Pairs pairs, const WideLine &line, int target) const
    {
        const quint16 *channels = line.data() + kChannels * unsignedOf(areas_.first(target));
        const quint16 *weights =
            weights_.data() + 2 * kChannels * unsignedOf(target) * unsignedOf(pairs);
        Pair sums = {};
        for (int i = 0; i < pairs; ++i, channels += 2 * kChannels, weights += 2 * kChannels) {
            sums += pairAt(channels) * pairAt(weights);
        }
        return sums;
    }

    template <typename Pairs>
    void scaleBy(Pairs pairs, const WideLine &line, QRgb *to) const
    {
        int x = 0;
        for (; x + 1 < size_; x += 2) {
            const Bytes two = joined(sumsOf(pairs, line, x), sumsOf(pairs, line, x + 1));
            std::memcpy(to + x, &two, sizeof two);
        }
        if (x < size_) {
            const Bytes two = joined(sumsOf(pairs, line, x), Pair{});
            std::memcpy(to + x, &two, sizeof *to);
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
    const std::size_t channels = kChannels * unsignedOf(image.width());
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
