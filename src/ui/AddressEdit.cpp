#include "ui/AddressEdit.h"

#include "cameras/PastedAddresses.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>

#include <algorithm>

namespace velmora {
namespace {

// By its text, which the toolkit follows with the shortcut: its name depends on the version.
QAction *pasteOf(const QMenu &menu)
{
    const QList<QAction *> actions = menu.actions();
    const auto paste = std::ranges::find_if(actions, [](const QAction *action) {
        return action->text().startsWith(QLineEdit::tr("&Paste"));
    });
    return paste == actions.end() ? nullptr : *paste;
}

} // namespace

void AddressEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste)) {
        pasteFrom(QClipboard::Clipboard);
        event->accept();
    } else {
        BoxEdit::keyPressEvent(event);
    }
}

// The middle button pastes the current selection where the pointer is.
void AddressEdit::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton && QGuiApplication::clipboard()->supportsSelection()) {
        deselect();
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        pasteFrom(QClipboard::Selection);
        event->accept();
    } else {
        BoxEdit::mouseReleaseEvent(event);
    }
}

void AddressEdit::dropEvent(QDropEvent *event)
{
    if (event->source() == this) { // part of the text is moved within it
        BoxEdit::dropEvent(event);
        return;
    }
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    take(event->mimeData()->text());
    event->acceptProposedAction();
}

void AddressEdit::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (QAction *const paste = pasteOf(*menu)) {
        disconnect(paste, &QAction::triggered, nullptr, nullptr);
        connect(paste, &QAction::triggered, this, [this] { pasteFrom(QClipboard::Clipboard); });
    }
    if (!actions().isEmpty()) {
        menu->addSeparator();
        menu->addActions(actions());
    }
    menu->popup(event->globalPos());
}

void AddressEdit::pasteFrom(QClipboard::Mode mode)
{
    take(QGuiApplication::clipboard()->text(mode));
}

void AddressEdit::take(const QString &text)
{
    const QStringList addresses = addressLines(text);
    if (addresses.size() > 1) {
        Q_EMIT linesPasted(addresses);
    } else if (!addresses.isEmpty()) {
        insert(addresses.constFirst());
    }
}

} // namespace velmora
