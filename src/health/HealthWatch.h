// Notices what the user should be told: a camera that is late or back, storage gone or back, a disk
// nearly full.
#pragma once

#include "capture/Scheduler.h"
#include "health/DiskRoom.h"
#include "health/HealthBook.h"
#include "health/OldestFirst.h"

#include <QObject>

#include <map>
#include <optional>

namespace velmora {

/// Events that happen together are reported together.
class HealthWatch : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object, which outlives run().
    HealthWatch(StorageFolder &storage, Clock &clock, HealthBook &book, Scheduler &scheduler,
                OldestFirst &oldest);

    /// Checks every few seconds until a stop is requested.
    QCoro::Task<> run(std::stop_token stop);

    /// All cameras have been asked: from now on one that is quiet may be called late.
    void trust() { isTrusted_ = true; }

    /// The room on the storage folder's disk when it was last checked.
    [[nodiscard]] const std::optional<DiskRoom> &room() const { return room_; }

    [[nodiscard]] bool isDiskLow() const { return isDiskLow_; }

    /// Cameras that are late now.
    [[nodiscard]] std::vector<CameraAddress> late() const;

Q_SIGNALS:
    /// text: a sentence for the user.
    void noticed(const QString &text);

    /// late() gives other cameras than when this was last said; at first it gave none.
    void lateChanged();

    void roomChanged();

private:
    void look();
    void lookAtStorage();
    void lookAtStandstill();
    void forgiveStall();
    void forgive(std::chrono::milliseconds duration);
    void followPass();
    void lookAtCameras();
    void tellBack();
    void tellMarks();
    void lookAtDisk();
    void judgeRoom(const DiskRoom &room, qint64 limit);
    void keepRoom(const DiskRoom &room, qint64 limit);
    void holdCapture(const DiskRoom &room, qint64 limit);
    [[nodiscard]] bool isLate(const SettingsSnapshot &settings, CameraAddress camera) const;
    [[nodiscard]] std::chrono::milliseconds sinceAsked(const SettingsSnapshot &settings,
                                                       CameraAddress camera) const;
    [[nodiscard]] QString list(const std::vector<CameraAddress> &cameras) const;

    StorageFolder &storage_;
    Clock &clock_;
    HealthBook &book_;
    Scheduler &scheduler_;
    OldestFirst &oldest_;
    HealthOptions options_;
    std::map<CameraAddress, QString> back_; // with its folder, to know it again
    std::vector<CameraAddress> marked_;     // late, as last told
    std::optional<DiskRoom> room_;
    std::optional<Suspension> suspension_;                 // while the disk is too full
    std::optional<std::chrono::milliseconds> standsSince_; // nothing can come from any camera
    std::optional<std::chrono::milliseconds> lookedAt_;    // at the cameras, last
    std::optional<std::chrono::milliseconds> round_;       // the last one that has asked all
    std::optional<std::chrono::milliseconds> asked_;       // then, without what was forgiven since
    std::optional<std::chrono::milliseconds> asking_;      // the same of the pass under way
    QString seenStorage_; // the storage folder that was there when last looked at
    bool isGone_ = false; // the storage folder, as last reported
    bool isTrusted_ = false;
    bool isDiskLow_ = false;
};

} // namespace velmora
