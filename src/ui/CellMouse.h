// The mouse on the cells of the contact sheet.
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
    /// Everything passed in outlives the object. pressed: receives presses and releases. pointer:
    /// `MousePos`, which shows the pointer's position.
    CellMouse(ContactSheet &widgets, QLabel &pointer, ImageBrowser &browser, PressedEntry &pressed,
              const CameraTable &table);

Q_SIGNALS:
    /// A button was pressed on a cell, and has had no effect yet.
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
