// What the browser shows after files came, went or were renamed beside it.
#pragma once

#include "browser/BrowserLists.h"

namespace velmora {

/// Coroutines as those of BrowserLists, which they follow.
class ListUpdates
{
public:
    /// Everything given outlives the object.
    ListUpdates(BrowserData &data, CameraFolders &folders, Selection &selection,
                BrowserLists &lists);

    /// Lists the folder again after files were renamed; the position stays.
    QCoro::Task<> relist();

    /// No image of this camera can be seen where those of its like are shown: its folder's list, or
    /// its row of the group, is empty.
    [[nodiscard]] bool showsNoneOf(CameraAddress camera) const;

    /// Shows the first image of such a camera; the row that was selected in group view stays so.
    QCoro::Task<> showFirst(CameraAddress camera);

    /// Lists the folder again after old images were deleted; the same image stays selected, or else
    /// the newest is.
    QCoro::Task<> dropDeleted();

private:
    [[nodiscard]] bool isListed(CameraAddress camera) const;

    BrowserData &data_;
    CameraFolders &folders_;
    Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
