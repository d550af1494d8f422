// The keyboard focus of a button that is disabled while its work is done.
#pragma once

#include <QPointer>
#include <QWidget>

namespace velmora {

/// A disabled button cannot keep the focus, which moves on to the next control, and keys would act
/// there: the button gets it back, unless the user has taken it elsewhere meanwhile. All of this is
/// about one window, active or not.
class LentFocus
{
public:
    /// Disables the button; if it has the focus, that is lent.
    void disable(QWidget &button)
    {
        const bool hasIt = button.window()->focusWidget() == &button;
        button.setEnabled(false);
        if (hasIt) {
            taker_ = button.window()->focusWidget();
            isLent_ = true;
        }
    }

    /// True while the focus is lent, and where the toolkit put it. Ask before other controls are
    /// disabled, for which it would move again.
    [[nodiscard]] bool isUntouched(const QWidget &window) const
    {
        return isLent_ && window.focusWidget() == taker_;
    }

    /// The work is done: gives the focus to that control if it was untouched.
    void giveBack(QWidget &control, bool isUntouched)
    {
        isLent_ = false;
        if (isUntouched) {
            control.setFocus();
        }
    }

private:
    QPointer<QWidget> taker_; // none when no other control could take it
    bool isLent_ = false;
};

} // namespace velmora
