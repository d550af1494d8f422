// The contact sheet: what its ten cells and the zoom image show. Pictures are named here; whoever
// shows the sheet loads them.
#pragma once

#include "browser/BrowserState.h"

#include <QObject>

#include <array>

namespace velmora {

/// As the frames' property has it.
enum class FrameStyle { Plain = 0, Framed = 1 };

class Sheet : public QObject
{
    Q_OBJECT

public:
    /// Cells 0 to 9.
    [[nodiscard]] const ImageFile &image(int cell) const { return images_.at(index(cell)); }

    [[nodiscard]] FrameStyle frame(int cell) const { return frames_.at(index(cell)); }

    void setImage(int cell, const ImageFile &image);
    void setFrame(int cell, FrameStyle style);

    void clearImages();
    void clearFrames();

    /// Empties every cell and takes every frame away.
    void EffaceVue();

    [[nodiscard]] bool isZoomVisible() const { return zoomVisible_; }

    [[nodiscard]] const ImageFile &zoomed() const { return zoomed_; }

    /// Lays the zoom image over the cells.
    void showZoom(const ImageFile &image);

    /// Another image for a zoom image that is visible; a hidden one stays empty.
    void followZoom(const ImageFile &image);

    /// Makes the zoom image invisible, behind everything, and empty.
    void hideZoom();

Q_SIGNALS:
    void imageChanged(int cell);
    void frameChanged(int cell);
    void zoomChanged();

private:
    static std::size_t index(int cell) { return static_cast<std::size_t>(cell); }

    std::array<ImageFile, kCells> images_;
    std::array<FrameStyle, kCells> frames_{};
    ImageFile zoomed_;
    bool zoomVisible_ = false;
};

} // namespace velmora
