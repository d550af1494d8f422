// A text box that tells when it is entered, left and clicked, and when it is only set aside because
// another window came up.
#pragma once

#include <QLineEdit>

namespace velmora {

/// Being entered and being left come in turns: a box is left once for each time it was entered.
class BoxEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit BoxEdit(QWidget *parent = nullptr);

    /// True from the begin of an editing to its end, in front or set aside.
    [[nodiscard]] bool isInHand() const { return hand_ != Hand::Off; }

    /// Ends the editing now, wherever the focus is; does nothing while the box is not edited.
    void leave();

    /// Sets the box aside now, as another window does that comes up.
    void setAside();

Q_SIGNALS:
    /// The cursor stands in the box, which was not being edited; or something is typed into it
    /// after its editing was ended from outside.
    void entered();

    /// The editing has ended: the focus went elsewhere in this window. A menu of the box itself is
    /// not elsewhere, and another window that comes up ends nothing.
    void left();

    /// Another window came up, of this program or of another, or this one was hidden, while the
    /// cursor stood in the box. Whoever takes that for a leave calls leave().
    void wasSetAside();

    /// The window came back, with the cursor still in the box.
    void takenUpAgain();

    void clicked();

    /// Enter, of either part of the keyboard.
    void enterPressed();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Hand {
        Off,    // not edited
        Inside, // the cursor stands here, in the window in front
        Aside   // the cursor stands here, in a window behind another
    };

    void takeUp();
    void followFocus(const QWidget *now);

    Hand hand_ = Hand::Off;
};

} // namespace velmora
