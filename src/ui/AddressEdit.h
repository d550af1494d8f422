// The text box of a camera's address.
#pragma once

#include "ui/BoxEdit.h"

#include <QClipboard>
#include <QStringList>

namespace velmora {

/// Takes a pasted or dropped address without the blanks around it. Several lines are no address:
/// they are told, and the box stays as it is.
class AddressEdit : public BoxEdit
{
    Q_OBJECT

public:
    using BoxEdit::BoxEdit;

Q_SIGNALS:
    /// Two addresses at least.
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
