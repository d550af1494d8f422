// The cameras' folders as the browser reads them: which they are, when they may be read, and how a
// reading ends when a newer action supersedes it.
#pragma once

#include "browser/BrowserState.h"
#include "browser/FolderReader.h"
#include "capture/Scheduler.h"

#include <QCoro/QCoroTask>
#include <QScopedValueRollback>
#include <QSet>

#include <exception>

namespace velmora {

/// Unwinds an action that was reading a folder when a newer one superseded it, or when the storage
/// folder changed.
class Superseded : public std::exception
{
};

/// Folders are in text form. Readings may end with Superseded.
class CameraFolders
{
public:
    /// Everything passed in outlives the object.
    CameraFolders(StorageFolder &storage, Scheduler &scheduler, Clock &clock,
                  const BrowserState &state);

    /// A camera's folder; the storage folder itself for a row without an address.
    [[nodiscard]] QString of(CameraAddress camera) const;

    /// Before work in folders: makes a requested check of the storage folder, and stops the timers
    /// while its box is being edited. Whether folders may be read then, StorageFolder says.
    void settleStorage();

    /// To be called before a folder is read. False until the storage folder has been checked, and
    /// while it is missing or its box is being edited: folders are left alone then.
    [[nodiscard]] bool beginReading();

    /// True when they were left alone last time: the list may be another camera's.
    [[nodiscard]] bool hasMissedReading() const { return isMissed_; }

    /// The images of a folder, which is made if missing; never nullptr.
    QCoro::Task<std::shared_ptr<const ImageNames>> names(QString folder);

    /// While the result lives, a missing folder is not made, and counts as empty.
    [[nodiscard]] QScopedValueRollback<bool> leaveMissing()
    {
        return QScopedValueRollback<bool>(leavesMissing_, true);
    }

    /// The image that the group view shows for a camera; none for a row without an address.
    QCoro::Task<ImageFile> newest(CameraAddress camera);

    /// True when an image that was shown is gone, while its storage folder is not.
    [[nodiscard]] bool hasLost(const ImageFile &image) const;

    /// A newer action takes over: readings under way end with Superseded, and so does every reading
    /// before that action may start.
    void supersede();
    void startReadings();

private:
    void make(const QString &folder);
    void rememberNotMade();

    StorageFolder &storage_;
    Scheduler &scheduler_;
    const BrowserState &state_;
    FolderReader reader_;
    QSet<QString> notMade_; // native paths, already reported
    std::stop_source reading_;
    bool isMissed_ = false;
    bool leavesMissing_ = false;
};

} // namespace velmora
