#include "ui/BoxEdit.h"

#include "base/OneLine.h"

#include <QApplication>
#include <QDropEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

/// Takes the first non-empty line of a pasted text.
class FirstLine final : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &input, int &caret) const override
    {
        input = nonEmptyLines(input).value(0);
        caret = std::min(caret, static_cast<int>(input.size()));
        return Acceptable;
    }
};

} // namespace

BoxEdit::BoxEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setValidator(new FirstLine(this));
    connect(this, &QLineEdit::textEdited, this, [this] {
        if (hasFocus()) {
            takeUp();
        }
    });
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, const QWidget *now) { followFocus(now); });
}

// The toolkit takes the focus away from what is left of it.
BoxEdit::~BoxEdit()
{
    qApp->disconnect(this);
}

bool BoxEdit::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_E && key->matches(QKeySequence::MoveToEndOfLine)) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void BoxEdit::beginEdit()
{
    setFocus();
    if (!hasFocus()) {
        leaveOthers();
    }
    if (hand_ == Hand::Off) {
        takeUp();
        if (!hasFocus()) {
            setAside();
        }
    }
}

// In a window that is not active, the focus moves without any event for the box that had it.
void BoxEdit::leaveOthers() const
{
    for (BoxEdit *const box : window()->findChildren<BoxEdit *>()) {
        if (box != this) {
            box->leave();
        }
    }
}

void BoxEdit::leave()
{
    if (std::exchange(hand_, Hand::Off) != Hand::Off) {
        Q_EMIT left();
    }
}

void BoxEdit::setAside()
{
    if (hand_ == Hand::Inside) {
        hand_ = Hand::Aside;
        Q_EMIT wasSetAside();
    }
}

void BoxEdit::takeUp()
{
    const Hand before = std::exchange(hand_, Hand::Inside);
    if (before == Hand::Off) {
        Q_EMIT entered();
    } else if (before == Hand::Aside) {
        Q_EMIT takenUpAgain();
    }
}

// Once its window is active again, a box learns where the focus went.
void BoxEdit::followFocus(const QWidget *now)
{
    if (hand_ == Hand::Aside && now != nullptr && now != this && now->window() == window()) {
        leave();
    }
}

void BoxEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        takeUp();
    }
}

void BoxEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::ActiveWindowFocusReason) {
        setAside();
    } else if (event->reason() != Qt::PopupFocusReason) {
        leave();
    }
}

void BoxEdit::hideEvent(QHideEvent *event)
{
    QLineEdit::hideEvent(event);
    setAside();
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
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !event->isAutoRepeat()) {
        Q_EMIT enterPressed();
    }
}

// The toolkit drops text into a box without entering it: it would never be left either.
void BoxEdit::dropEvent(QDropEvent *event)
{
    beginEdit();
    QLineEdit::dropEvent(event);
}

} // namespace velmora
