// The text box of a camera's address.
#pragma once

#include "ui/BoxEdit.h"

#include <QClipboard>
#include <QStringList>

namespace velmora {

/// Accepts a pasted or dropped address without its surrounding blanks. Several lines are not an
/// address: they are reported, and the box stays as it is.
class AddressEdit : public BoxEdit
{
    Q_OBJECT

public:
    using BoxEdit::BoxEdit;

Q_SIGNALS:
    /// At least two addresses.
    void linesPasted(const QStringList &addresses);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void pasteFrom(QClipboard::Mode mode);
    void take(const QString &text);
};

} // namespace velmora
