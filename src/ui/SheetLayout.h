// Places of the contact sheet's cells, zoom image and controls, as pure geometry.
#pragma once

#include <QRect>
#include <QSize>

namespace velmora {

/// Three rows of three cells, and the tenth cell alone below the ninth; the controls are to its
/// left. Everything scales with the room available, and is centred in it.
class SheetLayout
{
public:
    /// The designed size in logical pixels, at 15 twips each.
    static constexpr QSize kUsual{720, 720};

    /// 60 % of it.
    static constexpr QSize kSmallest{432, 432};

    explicit SheetLayout(QSize room);

    /// 1 at the designed size.
    [[nodiscard]] double scale() const;

    /// Cells 0 to 9.
    [[nodiscard]] QRect cell(int index) const;

    /// Covers the nine cells.
    [[nodiscard]] QRect zoom() const;

    [[nodiscard]] QRect controls() const;

private:
    /// Scales a place at the smallest size, in twips, to the present one.
    [[nodiscard]] QRect scaled(int left, int top, int width, int height) const;

    double pixelsPerTwip_;
    QPoint origin_;
};

} // namespace velmora
