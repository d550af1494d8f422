// Binds the storage line of the main window: lamp, folder box, buttons.
#pragma once

#include "ui/BoxEdit.h"
#include "ui/Lamp.h"
#include "view/StorageFace.h"

#include <QAbstractButton>

namespace velmora {

/// The controls of the line.
struct StorageControls
{
    Lamp &LampSA;
    BoxEdit &StRep;
    QAbstractButton &Browse;
    QAbstractButton &MakeDir;
    QAbstractButton &Import;
    QAbstractButton &Cache;
    QWidget &Selecteur; // gets the focus when the box gives it up
};

class StorageBox : public QObject
{
    Q_OBJECT

public:
    /// The controls outlive this object, which belongs to their window.
    StorageBox(const StorageControls &controls, StorageFolder &storage, QWidget &window);

    /// While files in the camera folders are being renamed, none may be added and no folder made.
    void holdButtons();
    void releaseButtons();

    /// Puts the text in force, wherever the focus is; the box no longer has it.
    void leave();

    /// The window is being hidden: an unchanged text counts as left.
    void setAside() { controls_.StRep.setAside(); }

private:
    void bind();
    void enter();
    void edit(const QString &typed);
    void choose(const QString &nativeFolder);
    void showText(const QString &text);
    void showState(const StorageState &state);
    void showMakeDir(bool canMakeFolder);
    void showHideButton(HideButton button);
    void browse();

    StorageControls controls_;
    StorageFolder &storage_;
    QWidget &window_;
    bool held_ = false;
};

} // namespace velmora
