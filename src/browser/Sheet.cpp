#include "browser/Sheet.h"

#include <utility>

namespace velmora {

void Sheet::setImage(int cell, const ImageFile &image)
{
    images_.at(index(cell)) = image;
    Q_EMIT imageChanged(cell);
}

void Sheet::setFrame(int cell, FrameStyle style)
{
    frames_.at(index(cell)) = style;
    Q_EMIT frameChanged(cell);
}

void Sheet::press(int cell)
{
    release();
    pressed_ = cell;
    Q_EMIT frameChanged(cell);
}

void Sheet::release()
{
    if (const std::optional<int> cell = std::exchange(pressed_, std::nullopt)) {
        Q_EMIT frameChanged(*cell);
    }
}

void Sheet::clearImages()
{
    for (int cell = 0; cell < kCells; ++cell) {
        setImage(cell, {});
    }
}

void Sheet::clearFrames()
{
    release();
    for (int cell = 0; cell < kCells; ++cell) {
        setFrame(cell, FrameStyle::Plain);
    }
}

void Sheet::EffaceVue()
{
    clearImages();
    clearFrames();
}

void Sheet::showZoom(const ImageFile &image)
{
    zoomed_ = image;
    zoomVisible_ = true;
    Q_EMIT zoomChanged();
}

void Sheet::followZoom(const ImageFile &image)
{
    if (zoomVisible_) {
        showZoom(image);
    }
}

void Sheet::hideZoom()
{
    zoomVisible_ = false;
    zoomed_ = {};
    Q_EMIT zoomChanged();
}

} // namespace velmora
