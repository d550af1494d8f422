// A text box that tells when it is entered, left and clicked, and when it is only set aside because
// another window was activated.
#pragma once

#include <QLineEdit>

namespace velmora {

/// Being entered and being left alternate: a box is left once each time it was entered.
class BoxEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit BoxEdit(QWidget *parent = nullptr);
    Q_DISABLE_COPY_MOVE(BoxEdit)

    /// Says nothing more, whether or not it has the cursor.
    ~BoxEdit() override;

    /// True from the start of an edit to its end, whether or not it is set aside.
    [[nodiscard]] bool isInHand() const { return hand_ != Hand::Off; }

    /// Begins an edit, unless there is one, and gives the box the focus: for a text that came
    /// without a key, put there by a tool; a drop does so by itself. In a window that is not active
    /// the box is set aside.
    void beginEdit();

    /// Ends the edit now, wherever the focus is; does nothing unless the box is being edited.
    void leave();

    /// Sets the box aside now, as activating another window does.
    void setAside();

    /// A window's own key comes before the key's meaning for the cursor, of which the toolkit has
    /// some that no one expects (Ctrl+E: to the end of the line).
    bool event(QEvent *event) override;

Q_SIGNALS:
    /// The box, not being edited, got the cursor; or something is typed into it after its edit was
    /// ended from outside.
    void entered();

    /// The edit has ended: the focus went elsewhere in this window. The box's own menu does not
    /// count as elsewhere, and activating another window ends nothing.
    void left();

    /// While the box had the cursor, another window was activated, whether this program's or not,
    /// or this one was hidden. To treat that as leaving, call leave().
    void wasSetAside();

    /// The window was activated again, with the cursor still in the box.
    void takenUpAgain();

    void clicked();

    /// Enter, on either part of the keyboard; once each time it is pressed.
    void enterPressed();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    enum class Hand {
        Off,    // not being edited
        Inside, // has the cursor, in the active window
        Aside   // has the cursor, in a window that is not active
    };

    void takeUp();
    void leaveOthers() const;
    void followFocus(const QWidget *now);

    Hand hand_ = Hand::Off;
};

} // namespace velmora
