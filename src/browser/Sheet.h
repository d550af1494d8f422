// The contact sheet: which images its ten cells and the zoom image show. The pictures themselves
// are loaded where the sheet is shown.
#pragma once

#include "browser/BrowserState.h"

#include <QObject>

#include <array>
#include <optional>

namespace velmora {

/// As in the frames' property.
enum class FrameStyle { Plain = 0, Framed = 1 };

class Sheet : public QObject
{
    Q_OBJECT

public:
    /// Cells 0 to 9.
    [[nodiscard]] const ImageFile &image(int cell) const { return images_.at(index(cell)); }

    /// Framed when it is the selected cell, or the one being pressed.
    [[nodiscard]] FrameStyle frame(int cell) const
    {
        return pressed_ == cell ? FrameStyle::Framed : frames_.at(index(cell));
    }

    void setImage(int cell, const ImageFile &image);
    void setFrame(int cell, FrameStyle style);

    /// The button was pressed on a cell, which is framed until it is released or the frames are
    /// cleared.
    void press(int cell);
    void release();

    void clearImages();
    void clearFrames();

    /// Empties the contact sheet ("efface les vues"): every cell, with its frame.
    void EffaceVue();

    [[nodiscard]] bool isZoomVisible() const { return zoomVisible_; }

    [[nodiscard]] const ImageFile &zoomed() const { return zoomed_; }

    /// Lays the zoom image over the cells.
    void showZoom(const ImageFile &image);

    /// Changes the image of a visible zoom image; a hidden one stays empty.
    void followZoom(const ImageFile &image);

    /// Makes the zoom image invisible, puts it behind everything, and empties it.
    void hideZoom();

Q_SIGNALS:
    void imageChanged(int cell);
    void frameChanged(int cell);
    void zoomChanged();

private:
    static std::size_t index(int cell) { return static_cast<std::size_t>(cell); }

    std::array<ImageFile, kCells> images_;
    std::array<FrameStyle, kCells> frames_{};
    std::optional<int> pressed_;
    ImageFile zoomed_;
    bool zoomVisible_ = false;
};

} // namespace velmora
