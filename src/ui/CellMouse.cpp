#include "ui/CellMouse.h"

#include "cameras/CameraChoices.h"
#include "ui/ToolTips.h"

namespace velmora {

CellMouse::CellMouse(ContactSheet &widgets, QLabel &pointer, ImageBrowser &browser,
                     PressedEntry &pressed, const CameraTable &table)
    : widgets_(widgets)
    , pointer_(pointer)
    , browser_(browser)
    , pressed_(pressed)
    , table_(table)
{
    for (int cell = 0; cell < kCells; ++cell) {
        bind(cell);
    }
    connect(&widgets_.zoom(), &PictureView::clicked, &browser_, &ImageBrowser::hideZoom);
}

void CellMouse::bind(int cell)
{
    PictureView *const view = &widgets_.cell(cell);
    connect(view, &PictureView::pressed, this,
            [this, cell](auto button, auto modifiers) { press(cell, button, modifiers); });
    connect(view, &PictureView::released, &browser_, &ImageBrowser::releaseCell);
    connect(view, &PictureView::clicked, this, [this] { pressed_.releaseCell(); });
    connect(view, &PictureView::doubleClicked, this,
            [this, cell] { browser_.doubleClickCell(cell); });
    connect(view, &PictureView::pointerMoved, this,
            [this, cell](QPoint position) { showPointer(cell, position); });
}

void CellMouse::press(int cell, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const ImageFile image = browser_.shown().sheet.image(cell);
    if (button == Qt::LeftButton) {
        pressed_.pressCell(cell);
    }
    Q_EMIT cellPressed(); // which may bring another image into the cell
    if (button == Qt::LeftButton && widgets_.cell(cell).holdsPicture()) {
        pressed_.frameCell();
    } else if (button == Qt::RightButton && modifiers == Qt::NoModifier) {
        browser_.zoomCell(cell, image);
    }
}

void CellMouse::showPointer(int cell, QPoint position)
{
    const BrowserState &state = browser_.shown().state;
    if (state.DirCamEnCours()) {
        return;
    }
    pointer_.setText(QStringLiteral("%1:%2").arg(position.x()).arg(position.y()));
    const CameraAddress camera{state.camera().group, cell};
    setPlainToolTip(widgets_.cell(cell), state.view() == View::Group
                                             ? shownCamera(table_.settings().snapshot(), camera)
                                             : QString());
}

} // namespace velmora
