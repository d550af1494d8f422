// The slice of a camera's list that stands on the contact sheet, and the start of the renaming that
// images with names in the older form are due.
#pragma once

#include "browser/BrowserServices.h"
#include "browser/Selection.h"

namespace velmora {

class SliceView
{
public:
    /// Everything given outlives the object.
    SliceView(const BrowserServices &services, BrowserData &data, Selection &selection);

    /// Shows the ten images around the selected one, which is framed, and where it stands in the
    /// list. The list has a selected image.
    void show();

private:
    void showFrom(int start);
    void startConformity(const ImageFile &image);

    BrowserServices services_;
    BrowserData &data_;
    Selection &selection_;
};

} // namespace velmora
