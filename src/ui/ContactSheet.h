// The contact sheet's widgets: ten cells with their frames, and the zoom image that can lie over
// them. The controls are in the corner that the cells leave free.
//
//   ContactSheet
//     Vue0 … Vue9, each under its Cadre0 … Cadre9
//     controls (given by the window)
//     ZoomImage
#pragma once

#include "browser/BrowserState.h"
#include "ui/CellFrame.h"
#include "ui/CornerControls.h"
#include "ui/PictureView.h"

#include <QWidget>

#include <array>

namespace velmora {

class ContactSheet : public QWidget
{
    Q_OBJECT

public:
    explicit ContactSheet(QWidget *parent = nullptr);

    /// The widget for the free corner.
    void setControls(QWidget &controls);

    [[nodiscard]] PictureView &cell(int index) { return *Vue.at(static_cast<std::size_t>(index)); }

    [[nodiscard]] CellFrame &frame(int index) { return *Cadre.at(static_cast<std::size_t>(index)); }

    [[nodiscard]] PictureView &zoom() { return *ZoomImage; }

    /// Shows the zoom image in front of everything, or hides it behind.
    void setZoomVisible(bool visible);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The cells have changed size.
    void resized();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    std::array<PictureView *, kCells> Vue{};
    std::array<CellFrame *, kCells> Cadre{};
    PictureView *ZoomImage;
    QWidget *controls_ = nullptr;
    CornerControls *corner_ = nullptr;
};

} // namespace velmora
