// Identifies the program's windows to the desktop.
#pragma once

namespace velmora {

/// Gives all windows the program's icon and the name of its desktop entry, by which the desktop
/// groups them. To be called once there is a QGuiApplication, before its first window.
void introduceToDesktop();

} // namespace velmora
