// The entry on which the left mouse button was pressed in the browser, kept by name until the
// button is released.
#pragma once

#include "browser/ImageBrowser.h"

#include <optional>

namespace velmora {

/// Whatever is read between press and release, the entry that was under the pointer at the press is
/// chosen; if it is no longer shown, nothing is.
class PressedEntry
{
public:
    /// browser: outlives the object.
    explicit PressedEntry(ImageBrowser &browser);

    /// The button was pressed on an image of the list, a camera of the group view, or a cell.
    void pressFile(int index);
    void pressCameraRow(int row);
    void pressCell(int cell);

    /// It was released on the same.
    void releaseFile();
    void releaseCameraRow();
    void releaseCell();

    /// Performs the action of a press on a cell: frames it.
    void frameCell();

private:
    struct Entry
    {
        View view;
        CameraAddress camera;
        ImageFile image;
        int cell;
    };

    [[nodiscard]] const BrowserState &state() const { return browser_.shown().state; }

    [[nodiscard]] std::optional<int> cellNow() const;

    ImageBrowser &browser_;
    std::optional<Entry> entry_;
};

} // namespace velmora
