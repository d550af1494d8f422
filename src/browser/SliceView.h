// Shows the slice of a camera's list that is on the contact sheet, and starts the renaming for
// which images with names in the older form are due.
#pragma once

#include "browser/Selection.h"
#include "capture/Conformity.h"

namespace velmora {

class SliceView
{
public:
    /// What it uses of the layers below.
    struct Uses
    {
        const StorageFolder &storage;
        Conformity &conformity;
        EventLog &log;
        TaskScope &scope; // the renaming runs in it
    };

    /// Everything passed in outlives the object.
    SliceView(const Uses &uses, const FileList &files, Sheet &sheet, Selection &selection);

    /// Shows the ten images around the selected one, frames that, and shows its place in the list.
    /// The list has a selected image.
    void show();

private:
    void showFrom(int start);
    void startConformity(const ImageFile &image);

    Uses uses_;
    const FileList &files_;
    Sheet &sheet_;
    Selection &selection_;
};

} // namespace velmora
