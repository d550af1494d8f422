// Shows the selected camera: its last stored image beside a live one, fetched for it.
#pragma once

#include "base/Clock.h"
#include "base/FileStamp.h"
#include "base/TaskScope.h"
#include "cameras/StorageFolder.h"
#include "capture/CameraRequests.h"
#include "capture/HttpClient.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <optional>
#include <stop_token>

namespace velmora {

/// Captions of the two pictures.
struct LiveCaptions
{
    QString web;   // above the live picture
    QString local; // above the stored one

    bool operator==(const LiveCaptions &) const = default;
};

/// The file of a live picture.
struct LiveFile
{
    QString path; // native; empty for none
    CameraAddress camera;
    std::optional<FileStamp> stamp; // as it was written
};

/// Pictures are passed as native paths; the window finds out whether a file can be shown, and says
/// so if it cannot.
class LiveView : public QObject
{
    Q_OBJECT

public:
    /// Fetches run in `scope`, which outlives this object and is joined before it is destroyed; a
    /// stop of the scope gives up the fetch under way.
    LiveView(StorageFolder &storage, CameraRequests &requests, PictureSource &source, Clock &clock,
             TaskScope &scope);

    /// Shows a camera ("affiche"): its newest stored image, then a live one from the address in the
    /// box. Whatever an earlier call still had to do is given up. An empty address changes nothing.
    void Affiche(CameraAddress camera, const QString &url);

    /// Gives up what is under way and shows no picture.
    void clear();

    /// Clears the view if it is on this camera, whose row now has another one or none.
    void forget(CameraAddress camera);

    /// The stored image was clicked: the newest one now in the camera's folder is to be enlarged.
    /// The camera is the one on show, or else `current`.
    void iTarget_Click(CameraAddress current);

    /// The live picture was clicked: it is to be enlarged, or it is told why it cannot be.
    void iWeb_Click();

    /// False once another program has replaced or deleted the file of the live picture.
    [[nodiscard]] bool isLivePictureThere() const;

    /// The last live picture given could not be shown, though it begins like one.
    void tellUnreadable();

    /// Why there is no live picture of this camera; empty for one that is not on show or is being
    /// fetched, or whose picture is there.
    [[nodiscard]] QString reason(CameraAddress camera) const;

    [[nodiscard]] const LiveCaptions &captions() const { return captions_; }

    /// The file of the live picture once it has been written, else empty. Always the same file,
    /// \tmp\Target.jpg in the storage folder.
    [[nodiscard]] QString livePicture() const { return live_.path; }

Q_SIGNALS:
    void captionsChanged();

    /// A camera is being fetched, and no longer is; the second may come without the first.
    void fetchBegan(velmora::CameraAddress camera);
    void fetchEnded();

    /// A camera's transfer has ended.
    void downloaded(velmora::CameraAddress camera, int seconds);

    /// Why the live picture cannot be stored or enlarged, as a text for the user; empty once one
    /// was stored.
    void troubleChanged(const QString &text);

    /// The status line of the view is to be emptied.
    void statusCleared();

    /// reason() has changed.
    void reasonChanged();

    /// An image is to be shown enlarged. path: native.
    void zoomWanted(const QString &path);

    /// The stored image to show, or empty for none.
    void targetChanged(const QString &nativePath);

    /// The live picture to load, or empty for none. The same path may come again with a new picture
    /// in it.
    void webChanged(const QString &nativePath);

private:
    struct Reason
    {
        CameraAddress camera;
        QString text;
    };

    struct Shown
    {
        CameraAddress camera;
        QString storage; // the storage folder of its stored image; empty before that is looked for
    };

    void giveUp();
    QCoro::Task<> show(CameraAddress camera, QString url, std::stop_source abandon);
    void followStorage();
    QCoro::Task<> showStored(CameraAddress camera, std::stop_token stop);
    QCoro::Task<HttpReply> fetch(CameraAddress camera, QString url, std::stop_token stop);
    QCoro::Task<> enlarge(CameraAddress camera);
    void makeStorageFolder(CameraAddress camera);
    void announce(CameraAddress camera);
    QCoro::Task<QString> newestImage(QString folder, std::stop_token stop);
    void keep(CameraAddress camera, HttpReply &reply);
    void tellReason(CameraAddress camera, const QString &reason);
    [[nodiscard]] QString whyNotStored(const QString &folder, ReplyBody &body) const;
    [[nodiscard]] QString store(const QString &folder, ReplyBody &body) const;
    void tellNotStored(CameraAddress camera, const QString &reason);
    void finish();
    void setCaptions(const LiveCaptions &captions);
    void setLive(const LiveFile &file);

    StorageFolder &storage_;
    CameraRequests &requests_;
    Clock &clock_;
    PictureSource &source_;
    TaskScope &scope_;
    std::stop_source current_;
    std::stop_source attempt_; // the download under way
    LiveCaptions captions_;
    LiveFile live_;
    std::optional<Shown> shown_; // since the view was last cleared
    std::stop_source reading_;   // of the newest stored image
    Reason reason_;
};

} // namespace velmora
