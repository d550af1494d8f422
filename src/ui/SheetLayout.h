// Where the cells of the contact sheet, the zoom image and the controls stand, as pure geometry.
#pragma once

#include <QRect>
#include <QSize>

namespace velmora {

/// Three rows of three cells, and the tenth cell alone under the ninth; the controls stand left of
/// it. All grows in proportion with the room there is, and stands in its middle.
class SheetLayout
{
public:
    /// The size as designed, in logical pixels, of which 15 twips are one.
    static constexpr QSize kUsual{720, 720};

    /// Sixty hundredths of it.
    static constexpr QSize kSmallest{432, 432};

    explicit SheetLayout(QSize room);

    /// 1 at the usual size.
    [[nodiscard]] double scale() const;

    /// Cells 0 to 9.
    [[nodiscard]] QRect cell(int index) const;

    /// Covers the nine cells.
    [[nodiscard]] QRect zoom() const;

    [[nodiscard]] QRect controls() const;

private:
    /// From the smallest size's place to the one here; in twips.
    [[nodiscard]] QRect scaled(int left, int top, int width, int height) const;

    double pixelsPerTwip_;
    QPoint origin_;
};

} // namespace velmora
