// Loads one camera: fetches its picture, decides whether it is a new image, files it, and updates
// the camera's counters and times.
#pragma once

#include "base/Clock.h"
#include "cameras/StorageFolder.h"
#include "capture/CameraRequests.h"
#include "capture/ReadAhead.h"
#include "capture/StoredMark.h"
#include "capture/UndatedWatch.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <utility>
#include <vector>

namespace velmora {

/// Owns what becomes of a camera's answer: whether it is kept, its file, and the camera's stored
/// counters and dates. Only the scheduler calls it, for one camera at a time; everyone else
/// listens. It promises that every load ends with `loaded`, and before that with `cameraAnswered`
/// or `cameraFailed` unless it was given up; that no file is ever replaced; and that the settings
/// name an image as the last one only once its file is there.
class ImageStore : public QObject
{
    Q_OBJECT

public:
    /// What storing an image uses; all of it outlives the store.
    struct Uses
    {
        const CameraTable &table;
        StorageFolder &storage;
        CameraRequests &requests;
        ReadAhead &transfers;
        EventLog &log;
        Problems &problems;
        Clock &clock;
    };

    explicit ImageStore(const Uses &uses);
    Q_DISABLE_COPY_MOVE(ImageStore)
    ~ImageStore() override;

    /// A pass expects to load this camera: starts its transfer now. url: as for ChargeFile.
    void readAhead(const SettingsSnapshot &settings, CameraAddress camera, const QString &url);

    /// Gives up the transfers started ahead, and the one being waited for.
    void dropTransfers() { uses_.transfers.drop(); }

    /// Loads one camera ("charge le fichier"). url: the address requested; folder: text of the
    /// camera folder. Nothing changes for a row without an address, or when the fetch is given up,
    /// or when the row gets another address or none, or the storage box is entered, during it. Ends
    /// with `loaded` in every case.
    QCoro::Task<> ChargeFile(QString url, QString folder, CameraAddress camera);

    /// Until the next turn of the event loop, the changes of all cameras loaded reach the settings
    /// file together. Whoever reads the settings sees them at once. Not while the log is on: what
    /// one of its lines tells of is stored already.
    void gather();

    /// Stores what was gathered.
    void settle();

    /// Seconds by which a camera's reference time lies after its last download: 1 once an image was
    /// stored in automatic mode.
    [[nodiscard]] int automaticCounter(CameraAddress camera) const;

Q_SIGNALS:
    /// It is this camera's turn, which ends with `loaded`. address: as shown to the user, without
    /// credentials.
    void loadBegan(velmora::CameraAddress camera, const QString &address);

    /// The transfer has ended, with or without a picture.
    void downloaded(velmora::CameraAddress camera, int seconds);

    /// Yellow: a picture has arrived; red: the camera failed; green: all is well.
    void lampChanged(velmora::CameraAddress camera, velmora::LampColour colour);

    void bestTimeChanged(velmora::CameraAddress camera, velmora::BestTime time);

    /// New images since the last reset.
    void newImagesCounted(velmora::CameraAddress camera, int count);

    void imageStored(velmora::CameraAddress camera, const QString &fileName);

    /// The camera gave no picture, or it could not be stored; the reason is a text for the user.
    void cameraFailed(velmora::CameraAddress camera, const QString &reason);

    /// A picture that arrived could not be stored; a sentence for the user.
    void storingFailed(const QString &text);

    /// The camera gave a picture, new or not. remark: what is odd about it, empty if nothing is.
    void cameraAnswered(velmora::CameraAddress camera, const QString &remark);

    /// The camera has sent three pictures without a date, of which the usual rule keeps one.
    void undatedNoticed(velmora::CameraAddress camera);

    /// What was told of cameras so far stands in the settings file, if it could be stored.
    void settled();

    /// The camera is finished: the capture timer may run again.
    void loaded();

private:
    struct Place;
    struct Arrival; // a picture that is long enough, on its way into the folder

    QCoro::Task<> load(QString url, QString folder, Arrival *arrival);
    void giveUp(const Arrival &arrival);
    QCoro::Task<> mark(Arrival *arrival);
    void warnOfMissingLooks();
    QCoro::Task<> bringNear(Arrival *arrival, const HttpReply *reply);
    void announce(const QString &url, CameraAddress camera);
    void judge(Arrival &arrival, const HttpReply &reply) const;
    void name(Arrival &arrival, const QString &url, const QString &contentType) const;
    void noticeDates(const Arrival &arrival);
    QCoro::Task<> keep(Arrival *arrival);
    void keepMark(const Arrival &arrival);
    [[nodiscard]] int countNew(Arrival *arrival);
    QCoro::Task<> recordGood(Arrival *arrival);
    QCoro::Task<> store(Arrival *arrival);
    QCoro::Task<bool> storeOrGiveUp(Arrival *arrival);
    void recordBestTime(Arrival *arrival);
    void tellStored(const Arrival &arrival, int count);
    QCoro::Task<> failToStore(Arrival *arrival, std::error_code error);
    QCoro::Task<> failToStore(Arrival *arrival, QString reason);
    [[nodiscard]] QString title(CameraAddress camera) const;
    QCoro::Task<> fail(Arrival *arrival, QString reason);
    void setLamp(Arrival *arrival, LampColour colour);

    Uses uses_;
    UndatedWatch undatedWatch_;
    KeptMarks marks_;
    std::vector<std::pair<CameraAddress, PictureMark>> unsettled_; // kept since the last settle()
    PerCamera<qint8> automaticCounters_;
};

} // namespace velmora
