// Binds the storage line of the main window: lamp, folder box, buttons.
#pragma once

#include "cameras/StorageFolder.h"
#include "ui/BoxEdit.h"
#include "ui/Lamp.h"

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
};

class StorageBox : public QObject
{
    Q_OBJECT

public:
    /// The controls outlive this object, which belongs to their window.
    StorageBox(const StorageControls &controls, StorageFolder &storage, QWidget &window);

    /// While files of the camera folders are being renamed, none may be added and no folder made.
    void holdButtons();
    void releaseButtons();

private:
    void bind();
    void edit(const QString &typed);
    void showText(const QString &text);
    void showState(const StorageState &state);
    void showHideButton(const QString &caption);
    void browse();

    StorageControls controls_;
    StorageFolder &storage_;
    QWidget &window_;
    bool held_ = false;
};

} // namespace velmora
