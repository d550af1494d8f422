// A box for several lines of plain text.
#pragma once

#include <QPlainTextEdit>

namespace velmora {

/// Takes in the text of what is pasted or dropped, and nothing when it has none. (Qt 6.4's own box
/// ends the program when nothing has been copied, and changes text that is also given as Markdown.)
class PlainTextBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    void insertFromMimeData(const QMimeData *source) override;
};

} // namespace velmora
