// The keyboard focus of a button that is disabled while its work is done.
#pragma once

#include <QWidget>

namespace velmora {

/// Disables a button. The toolkit would pass its focus on, and a second press of its key would act
/// there, on "Quit" or "Cancel": the holder, on which no key acts, has the focus meanwhile. All of
/// this is about one window, active or not.
inline void disableButton(QWidget &button, QWidget &holder)
{
    if (button.window()->focusWidget() == &button) {
        holder.setFocus();
    }
    button.setEnabled(false);
}

/// The work is done: the control gets the focus from the holder, unless it is disabled or the user
/// has taken the focus elsewhere.
inline void returnFocus(const QWidget &holder, QWidget &control)
{
    if (holder.window()->focusWidget() == &holder && control.isEnabled()) {
        control.setFocus();
    }
}

} // namespace velmora
