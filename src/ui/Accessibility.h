// What screen readers are told of windows, pictures and labels that show values.
#pragma once

namespace velmora {

/// The toolkit takes a window or a picture made of a plain widget for a mere filling, and of a
/// label that has a name it tells the name alone. From now on windows are windows and pictures
/// pictures, and such a label is told with its value, "New images of camera 3: 12", anew whenever
/// it changes. For the time of the whole program; a second call changes nothing.
void installAccessibility();

} // namespace velmora
