// The cameras' folders as the browser reads them: which they are, when they may be read, and the
// end of a reading whose place a newer action takes.
#pragma once

#include "browser/BrowserServices.h"
#include "browser/BrowserState.h"
#include "browser/FolderReader.h"

#include <QCoro/QCoroTask>
#include <QSet>

#include <exception>

namespace velmora {

/// Unwinds an action that was reading a folder when a newer one took its place, or when the storage
/// folder became another.
class Superseded : public std::exception
{
};

/// Folders are in text form. What reads may end with Superseded.
class CameraFolders
{
public:
    /// Everything given outlives the object.
    CameraFolders(const BrowserServices &services, const BrowserState &state);

    /// The folder of a camera; the storage folder itself for a row without address.
    [[nodiscard]] QString of(CameraAddress camera) const;

    /// Folders are left alone until the storage folder has been checked, and while it is missing or
    /// its box is being edited.
    [[nodiscard]] bool mayRead();

    /// True when they were left alone the last time: the list may be another camera's.
    [[nodiscard]] bool hasMissedReading() const { return isMissed_; }

    /// The images of a folder, which is made when it is missing; never nullptr.
    QCoro::Task<std::shared_ptr<const ImageNames>> names(QString folder);

    /// The image that the group view shows of a camera; none for a row without address.
    QCoro::Task<ImageFile> newest(CameraAddress camera);

    /// A newer action is to take over: what is reading ends with Superseded, and so does what is
    /// read before the next action may.
    void supersede();
    void allowReading();

private:
    void make(const QString &folder);
    void rememberNotMade();

    BrowserServices services_;
    const BrowserState &state_;
    FolderReader reader_;
    QSet<QString> notMade_; // native paths, told already
    std::stop_source reading_;
    bool isMissed_ = false;
};

} // namespace velmora
