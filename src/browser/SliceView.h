// Shows the slice of a camera's list that is on the contact sheet, and starts the renaming for
// which images with names in the older form are due.
#pragma once

#include "browser/BrowserServices.h"
#include "browser/Selection.h"

namespace velmora {

class SliceView
{
public:
    /// Everything passed in outlives the object.
    SliceView(const BrowserServices &services, BrowserData &data, Selection &selection);

    /// Shows the ten images around the selected one, frames that, and shows its place in the list.
    /// The list has a selected image.
    void show();

private:
    void showFrom(int start);
    void startConformity(const ImageFile &image);

    BrowserServices services_;
    BrowserData &data_;
    Selection &selection_;
};

} // namespace velmora
