#include "ui/BoxEdit.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QValidator>

#include <algorithm>

namespace velmora {
namespace {

/// Takes of a pasted text the first line that is not empty.
class FirstLine final : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &input, int &caret) const override
    {
        static const QRegularExpression lineEnds(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]+"));
        if (input.contains(lineEnds)) {
            input = input.split(lineEnds, Qt::SkipEmptyParts).value(0);
            caret = std::min(caret, static_cast<int>(input.size()));
        }
        return Acceptable;
    }
};

} // namespace

BoxEdit::BoxEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setValidator(new FirstLine(this));
}

void BoxEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        Q_EMIT entered();
    }
}

void BoxEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        Q_EMIT left();
    }
}

void BoxEdit::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clicked();
    }
}

void BoxEdit::keyPressEvent(QKeyEvent *event)
{
    QLineEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT enterPressed();
    }
}

} // namespace velmora
