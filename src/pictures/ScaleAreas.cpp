#include "pictures/ScaleAreas.h"

#include <algorithm>

namespace velmora {
namespace {

// Positions on the lines are counted in parts of a source pixel, `to` of them each: target pixel i
// begins at i * from and is `from` parts long.
int longestArea(qint64 from, qint64 to)
{
    qint64 longest = 0;
    for (qint64 start = 0; start < from * to; start += from) {
        longest = std::max(longest, (start + from - 1) / to - start / to + 1);
    }
    return static_cast<int>(longest);
}

} // namespace

ScaleAreas::ScaleAreas(int from, int to)
    : length_(longestArea(from, to))
{
    firsts_.reserve(static_cast<std::size_t>(to));
    weights_.reserve(static_cast<std::size_t>(to) * static_cast<std::size_t>(length_));
    for (int i = 0; i < to; ++i) {
        add(qint64{i} * from, from, to);
    }
}

// The weights are differences of one rounded running sum, so that they always add up exactly.
void ScaleAreas::add(qint64 start, qint64 from, qint64 to)
{
    const qint64 first = std::min(start / to, from - length_);
    firsts_.push_back(static_cast<int>(first));
    qint64 before = 0;
    for (qint64 i = first; i < first + length_; ++i) {
        const qint64 covered = std::clamp<qint64>((i + 1) * to - start, 0, from);
        const qint64 sum = (covered * kWhole + from / 2) / from;
        weights_.push_back(static_cast<quint16>(sum - before));
        before = sum;
    }
}

} // namespace velmora
