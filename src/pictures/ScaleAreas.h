// How much each pixel of a line contributes to each pixel of a shorter or longer one: pure
// arithmetic.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace velmora {

/// Each target pixel covers an area of the source line. All areas have the same length; some of
/// their weights are 0.
class ScaleAreas
{
public:
    static constexpr quint16 kWhole = 256; ///< the sum of an area's weights

    /// Lengths of the lines, at least 1.
    ScaleAreas(int from, int to);

    /// Number of source pixels of an area.
    [[nodiscard]] int length() const { return length_; }

    /// The first source pixel of an area; all of its length() pixels are in the line.
    [[nodiscard]] int first(int target) const { return firsts_[static_cast<std::size_t>(target)]; }

    /// length() weights.
    [[nodiscard]] const quint16 *weights(int target) const
    {
        return weights_.data() +
               static_cast<std::size_t>(target) * static_cast<std::size_t>(length_);
    }

private:
    void add(qint64 start, qint64 from, qint64 to);

    int length_;
    std::vector<int> firsts_;
    std::vector<quint16> weights_;
};

} // namespace velmora
