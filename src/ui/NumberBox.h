// A box for a number that changes only when the user means it to.
#pragma once

#include <QSpinBox>

namespace velmora {

/// What is being typed counts once the box is left in its window, by Enter, by leave(), or when the
/// window is closed; activating another window does not count as leaving it. The wheel turns the
/// number only in the box that has the cursor.
class NumberBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit NumberBox(QWidget *parent = nullptr);

    /// Takes what is being typed, wherever the focus is.
    void leave() { interpretText(); }

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
};

} // namespace velmora
