// What screen readers can say of windows, pictures and labels that show values.
#pragma once

namespace velmora {

/// The toolkit reports a window or picture made of a plain widget as mere filler, and only the name
/// of a label that has one. From this call on windows are reported as windows and pictures as
/// pictures, and such a label with its value, "New images of camera 3: 12", again whenever it
/// changes. Lasts as long as the program; a second call changes nothing.
void installAccessibility();

} // namespace velmora
