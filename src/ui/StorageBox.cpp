#include "ui/StorageBox.h"

#include "cameras/StoragePath.h"
#include "ui/FileBox.h"
#include "ui/ToolTips.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSignalBlocker>

namespace velmora {
namespace {

struct ButtonFace
{
    QString caption;
    QString tip;
    QKeySequence key;
};

ButtonFace faceOf(HideButton button)
{
    const QString hides = StorageBox::tr("Hide this window and show the images");
    switch (button) {
    case HideButton::Plain:
        return {QStringLiteral("Hide"), hides, Qt::ALT | Qt::Key_H};
    case HideButton::Ok:
        return {QStringLiteral("Ok"), hides, Qt::ALT | Qt::Key_K};
    case HideButton::Quits:
        break;
    }
    return {QStringLiteral("Quitter"), StorageBox::tr("End the program"), Qt::ALT | Qt::Key_Q};
}

/// The folder itself, or its nearest existing parent.
QString nearestFolder(QString path)
{
    while (!path.isEmpty() && !QFileInfo(path).isDir()) {
        path = QFileInfo(path).path();
    }
    return path;
}

} // namespace

StorageBox::StorageBox(const StorageControls &controls, StorageFolder &storage, QWidget &window)
    : QObject(&window)
    , controls_(controls)
    , storage_(storage)
    , window_(window)
{
    bind();
    showText(storage_.text());
    showState(storage_.state());
}

void StorageBox::bind()
{
    BoxEdit &box = controls_.StRep;
    connect(&box, &BoxEdit::textChanged, this, &StorageBox::edit);
    connect(&box, &BoxEdit::entered, this, &StorageBox::enter);
    connect(&box, &BoxEdit::takenUpAgain, this, &StorageBox::enter);
    connect(&box, &BoxEdit::wasSetAside, &storage_, &StorageFolder::setAside);
    connect(&box, &BoxEdit::left, &storage_, &StorageFolder::putInForce);
    connect(&box, &BoxEdit::enterPressed, this, &StorageBox::leave);
    connect(&controls_.MakeDir, &QAbstractButton::clicked, this, [this] {
        storage_.MakeDir_Click();
        leave();
    });
    connect(&controls_.Browse, &QAbstractButton::clicked, this, &StorageBox::browse);
    connect(&storage_, &StorageFolder::textChanged, this, &StorageBox::showText);
    connect(&storage_, &StorageFolder::checked, this, &StorageBox::showState);
    controls_.Browse.setFocusPolicy(Qt::TabFocus); // on a click, choosing a folder leaves the box
}

void StorageBox::enter()
{
    storage_.beginEdit();
    showState(storage_.state());
}

// In a window that is not active the box would hear nothing of the focus moving.
void StorageBox::leave()
{
    if (controls_.StRep.isInHand()) {
        controls_.Selecteur.setFocus();
        controls_.StRep.leave();
    }
}

// Text may also be dropped into the box from elsewhere.
void StorageBox::edit(const QString &typed)
{
    controls_.StRep.beginEdit();
    const int caret = caretAfterCleaning(withBackslashes(typed), controls_.StRep.cursorPosition());
    storage_.edit(typed);
    if (!controls_.StRep.hasFocus()) { // in a window that is not active
        storage_.setAside();
    }
    controls_.StRep.setCursorPosition(caret);
}

void StorageBox::showText(const QString &text)
{
    if (controls_.StRep.text() != text) {
        const QSignalBlocker blocker(controls_.StRep);
        controls_.StRep.setText(text);
    }
    setPlainToolTip(controls_.StRep, QDir::toNativeSeparators(storage_.native(text)));
}

void StorageBox::showState(const StorageState &state)
{
    const StorageFace face = storageFace(state.check);
    controls_.LampSA.setColour(face.lamp);
    controls_.Import.setEnabled(state.captureEnabled && !held_);
    showMakeDir(face.canMakeFolder);
    showHideButton(face.hideButton);
}

// A button that goes gives the focus to the next box, in which its keys would then be typed.
void StorageBox::showMakeDir(bool canMakeFolder)
{
    if (!canMakeFolder && window_.focusWidget() == &controls_.MakeDir) {
        controls_.Selecteur.setFocus();
    }
    controls_.MakeDir.setVisible(canMakeFolder);
}

// A new text drops the shortcut of a button, so that is set after it.
void StorageBox::showHideButton(HideButton button)
{
    const ButtonFace face = faceOf(button);
    controls_.Cache.setText(face.caption);
    controls_.Cache.setShortcut(face.key);
    controls_.Cache.setToolTip(face.tip);
    controls_.Cache.setAccessibleName(tr("%1: %2").arg(face.caption, face.tip));
}

void StorageBox::holdButtons()
{
    held_ = true;
    controls_.Import.setEnabled(false);
    controls_.MakeDir.setEnabled(false);
}

void StorageBox::releaseButtons()
{
    held_ = false;
    controls_.Import.setEnabled(storage_.state().captureEnabled);
    controls_.MakeDir.setEnabled(true);
}

// A dialog that starts in a missing folder has a row above it selected, beside what is then typed.
void StorageBox::browse()
{
    auto *const box = newFileBox(window_, tr("Storage folder"),
                                 nearestFolder(storage_.native(storage_.inForce())));
    box->setFileMode(QFileDialog::Directory);
    box->setOption(QFileDialog::ShowDirsOnly);
    box->setOption(QFileDialog::ReadOnly); // it is for choosing, not for deleting
    connect(box, &QFileDialog::filesSelected, this,
            [this](const QStringList &folders) { choose(QDir::cleanPath(folders.last())); });
    box->open();
}

// The box shows the folder in force and is not being edited any more.
void StorageBox::choose(const QString &nativeFolder)
{
    if (storage_.choose(nativeFolder)) {
        leave();
    }
}

} // namespace velmora
