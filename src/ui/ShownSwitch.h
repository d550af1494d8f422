// Shows the state of a switch that is not only the user's to change.
#pragma once

#include <QCheckBox>
#include <QSignalBlocker>

namespace velmora {

/// Leaves a pressed switch as it is: its release inverts what it shows, which is to be what was
/// seen at the press. So call it again when the switch was `released`.
inline void showSwitch(QCheckBox &box, bool on)
{
    if (!box.isDown()) {
        const QSignalBlocker noChange(box);
        box.setChecked(on);
    }
}

} // namespace velmora
