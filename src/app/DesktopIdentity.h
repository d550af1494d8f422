// By what the desktop knows the program's windows.
#pragma once

namespace velmora {

/// Gives all windows the program's icon and the name of its desktop entry, by which the desktop
/// puts them together. Once there is a QGuiApplication, and before its first window.
void introduceToDesktop();

} // namespace velmora
