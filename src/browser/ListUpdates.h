// Updates the browser after files were added, removed or renamed outside it.
#pragma once

#include "browser/BrowserLists.h"

namespace velmora {

/// Coroutines like those of BrowserLists, which they follow.
class ListUpdates
{
public:
    /// Everything passed in outlives the object.
    ListUpdates(const BrowserData &data, CameraFolders &folders, Selection &selection,
                BrowserLists &lists);

    /// Lists the folder again after files were renamed; the position stays.
    QCoro::Task<> relist();

    /// True when the view would show images of this camera but has none: its folder's list, or a
    /// row of the group with that folder, is empty.
    [[nodiscard]] bool showsNoneOf(CameraAddress camera) const;

    /// Shows the first image of such a camera; the selected row of the group view stays selected.
    QCoro::Task<> showFirst(CameraAddress camera);

    /// True when what is shown of this camera is from a folder that is no longer its own.
    [[nodiscard]] bool isOutdated(CameraAddress camera) const;

    /// Shows the folder of such a camera's new address, which is not made for that; the selected
    /// row of the group view stays selected.
    QCoro::Task<> followAddress(CameraAddress camera);

    /// True when an image in this camera's folder that the group view shows is there no longer.
    [[nodiscard]] bool hasLost(CameraAddress camera) const;

    /// Reads again after old images of this camera were deleted; the same image stays selected, or
    /// else the newest is, and in group view the same row. There the list is read too, which
    /// calendar and film go by.
    QCoro::Task<> dropDeleted(CameraAddress camera);

    /// True when the list is that of the camera's folder.
    [[nodiscard]] bool isListed(CameraAddress camera) const;

    /// Shows what the list and the group view have missed while a film was open, which keeps them.
    QCoro::Task<> catchUp();

private:
    QCoro::Task<> rebuild();
    void showGroupPosition();
    [[nodiscard]] bool hasLostAny() const;

    const BrowserData &data_;
    CameraFolders &folders_;
    Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
