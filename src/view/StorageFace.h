// What the main window shows of the storage folder, without its widgets.
#pragma once

#include "cameras/LampColour.h"
#include "cameras/StorageFolder.h"

namespace velmora {

/// What the button that hides the main window does.
enum class HideButton {
    Plain, // hides it, before anything was checked
    Ok,    // hides it, and the images are shown
    Quits  // ends the program, since there is no folder to work in
};

struct StorageFace
{
    LampColour lamp = LampColour::None;
    bool canMakeFolder = false; // the make-folder button is shown
    HideButton hideButton = HideButton::Plain;

    bool operator==(const StorageFace &) const = default;
};

/// What a check of the storage folder sets in the window.
[[nodiscard]] StorageFace storageFace(StorageCheck check);

} // namespace velmora
