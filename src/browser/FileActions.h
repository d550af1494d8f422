// Deletes stored images from the browser.
#pragma once

#include "browser/BrowserLists.h"
#include "browser/KillQuestion.h"

#include <QObject>

namespace velmora {

class FileActions : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object. While the storage box is being edited there are no
    /// questions and nothing is deleted.
    FileActions(const StorageFolder &storage, const CameraFolders &folders, const BrowserData &data,
                const Selection &selection, BrowserLists &lists);

    /// The delete key was pressed on the list of images: the question for the selected one; none
    /// when nothing is selected, the file is gone, or its folder is no longer the camera's.
    [[nodiscard]] std::optional<KillQuestion> LstDir_KeyDown() const;

    /// The delete key was pressed on the list of newest images: the question for the one selected,
    /// with the last 23 characters of its path, the usual length of a name. None for a camera
    /// without images, nor for an image whose folder is no longer the camera's.
    [[nodiscard]] std::optional<KillQuestion> LstDirCam_KeyDown() const;

    /// Deletes a file and shows what is left. A file that cannot be deleted simply stays on show;
    /// one in a storage folder that is no longer in force is spared.
    QCoro::Task<> kill(ImageFile target);

Q_SIGNALS:
    /// A file was not deleted: the storage folder has changed, or is being changed, since the
    /// question was asked.
    void spared(const velmora::ImageFile &image);

    /// A file has been deleted; what is shown follows.
    void deleted(const velmora::ImageFile &image);

private:
    [[nodiscard]] bool mayKill(const ImageFile &image) const;
    [[nodiscard]] bool isOf(CameraAddress camera, const ImageFile &image) const;

    const StorageFolder &storage_;
    const CameraFolders &folders_;
    const BrowserData &data_;
    const Selection &selection_;
    BrowserLists &lists_;
};

} // namespace velmora
