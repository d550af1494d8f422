#include "ui/StorageBox.h"

#include "cameras/StoragePath.h"
#include "ui/ToolTips.h"

#include <QDir>
#include <QFileDialog>
#include <QSignalBlocker>

namespace velmora {
namespace {

/// What the hide button does goes by its caption.
struct HideButton
{
    QString caption;
    QString tip;
    QKeySequence key;
};

HideButton hideButton(const QString &caption)
{
    if (caption == QStringLiteral("Quitter")) {
        return {caption, StorageBox::tr("End the program"), Qt::ALT | Qt::Key_Q};
    }
    const QString tip = StorageBox::tr("Hide this window and show the images");
    if (caption.isEmpty()) {
        return {QStringLiteral("Hide"), tip, Qt::ALT | Qt::Key_H};
    }
    return {caption, tip, Qt::ALT | Qt::Key_K};
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
    connect(&controls_.StRep, &BoxEdit::textChanged, this, &StorageBox::edit);
    connect(&controls_.StRep, &BoxEdit::entered, this, [this] {
        controls_.Import.setEnabled(false);
        storage_.beginEdit();
    });
    connect(&controls_.StRep, &BoxEdit::left, this, [this] { storage_.endEdit(); });
    connect(&controls_.StRep, &BoxEdit::wasSetAside, &controls_.StRep, &BoxEdit::leave);
    connect(&controls_.MakeDir, &QAbstractButton::clicked, this,
            [this] { storage_.MakeDir_Click(); });
    connect(&controls_.Browse, &QAbstractButton::clicked, this, &StorageBox::browse);
    connect(&storage_, &StorageFolder::textChanged, this, &StorageBox::showText);
    connect(&storage_, &StorageFolder::checked, this, &StorageBox::showState);
}

void StorageBox::edit(const QString &typed)
{
    const int caret = caretAfterCleaning(withBackslashes(typed), controls_.StRep.cursorPosition());
    storage_.edit(typed);
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
    controls_.LampSA.setColour(state.lamp);
    controls_.Import.setEnabled(state.captureEnabled && !held_);
    controls_.MakeDir.setVisible(state.canMakeFolder);
    showHideButton(state.hideCaption);
}

// A new text takes the button's key away.
void StorageBox::showHideButton(const QString &caption)
{
    const HideButton face = hideButton(caption);
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

void StorageBox::browse()
{
    auto *const dialog =
        new QFileDialog(&window_, tr("Storage folder"), storage_.native(storage_.text()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setOption(QFileDialog::ReadOnly); // it is for choosing, not for deleting
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString &folder) { storage_.choose(QDir::cleanPath(folder)); });
    dialog->open();
}

} // namespace velmora
