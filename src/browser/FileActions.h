// Deleting stored images from the browser.
#pragma once

#include "browser/BrowserLists.h"
#include "browser/KillQuestion.h"

namespace velmora {

class FileActions
{
public:
    /// Everything given outlives the object. While the box of the storage folder is being edited
    /// there are no questions and nothing is deleted.
    FileActions(const StorageFolder &storage, const BrowserData &data, const Selection &selection,
                BrowserLists &lists);

    /// The question for the selected image of the camera view; none when nothing is selected or the
    /// file is gone.
    [[nodiscard]] std::optional<KillQuestion> LstDir_KeyDown() const;

    /// The question for the newest image of the selected camera of the group view: the last 23
    /// characters of its path, as long as usual names are. None for a camera without images.
    [[nodiscard]] std::optional<KillQuestion> LstDirCam_KeyDown() const;

    /// Deletes a file and shows what is left. A file that cannot be deleted is simply still shown.
    QCoro::Task<> kill(ImageFile target);

private:
    const StorageFolder &storage_;
    const BrowserData &data_;
    const Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
