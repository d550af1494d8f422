// What the mouse does on the cells of the contact sheet.
#pragma once

#include "browser/ImageBrowser.h"
#include "browser/PressedEntry.h"
#include "cameras/CameraTable.h"
#include "ui/ContactSheet.h"

#include <QLabel>

namespace velmora {

class CellMouse : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object. pressed: where presses and releases go. pointer:
    /// `MousePos`, which shows where the pointer is.
    CellMouse(ContactSheet &widgets, QLabel &pointer, ImageBrowser &browser, PressedEntry &pressed,
              const CameraTable &table);

Q_SIGNALS:
    /// A button went down on a cell, which has not acted yet.
    void cellPressed();

private:
    void bind(int cell);
    void press(int cell, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void showPointer(int cell, QPoint position);

    ContactSheet &widgets_;
    QLabel &pointer_;
    ImageBrowser &browser_;
    PressedEntry &pressed_;
    const CameraTable &table_;
};

} // namespace velmora
