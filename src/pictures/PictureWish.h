// What a window wants of a picture: the size at which to show it, and how to fill that size.
#pragma once

#include <QHashFunctions>
#include <QSize>

namespace velmora {

enum class Fit {
    /// Exactly the shown size, whatever the picture's shape. A picture that is smaller both ways
    /// keeps its own size: the painter stretches it.
    Stretch,
    /// Keeps the picture's shape, as large as fits the shown size; never enlarged.
    KeepShape,
    /// The size that the decoder gives fastest, not smaller than KeepShape would be: the painter
    /// scales it the rest of the way.
    AtLeast,
};

struct PictureWish
{
    QSize shown; ///< device pixels; an empty size: the picture's own size
    Fit fit = Fit::KeepShape;

    bool operator==(const PictureWish &) const = default;
};

[[nodiscard]] inline std::size_t qHash(const PictureWish &wish, std::size_t seed = 0) noexcept
{
    return qHashMulti(seed, wish.shown.width(), wish.shown.height(), static_cast<int>(wish.fit));
}

} // namespace velmora
