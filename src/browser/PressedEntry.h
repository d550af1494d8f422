// What the mouse button went down on in the browser, kept by its name until the button comes up.
#pragma once

#include "browser/ImageBrowser.h"

#include <optional>

namespace velmora {

/// Whatever is read between a press and its release, the entry that was under the pointer at
/// the press is the one that is chosen; when it is not shown any more, nothing is.
class PressedEntry
{
public:
    /// browser: outlives the object.
    explicit PressedEntry(ImageBrowser &browser);

    /// The button went down on an image of the list, a camera of the group view, or a cell.
    void pressFile(int index);
    void pressCameraRow(int row);
    void pressCell(int cell);

    /// It came up again on the same.
    void releaseFile();
    void releaseCameraRow();
    void releaseCell();

    /// The left or the right button of a press on a cell acts: frames it, or enlarges its image.
    void frameCell();
    void zoomCell();

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
