// Makes room on a disk: deletes the oldest images of all cameras until enough is free.
#pragma once

#include "base/Clock.h"
#include "base/FolderFiles.h"
#include "base/TaskScope.h"
#include "base/WorkSlice.h"
#include "cameras/StorageFolder.h"
#include "health/HealthOptions.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QObject>

#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace velmora {

/// Only files named like captured images are touched, never a camera's newest, never through a
/// link, and none of a camera whose newest image is dated later than the clock; nor any whose
/// deletion would free nothing: in a folder on a disk of its own, or with a second name. What was
/// deleted is recorded in the file Velmora.deleted in the program folder.
class OldestFirst : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object; the scope is joined before it is destroyed.
    OldestFirst(const CameraTable &table, StorageFolder &storage, Clock &clock, TaskScope &scope);

    /// Deletes until that many bytes are free on the storage folder's disk, or nothing is left that
    /// may go, or a hundred images went without gain (a disk that keeps old states does not free
    /// what is deleted). cameras: those whose images may be deleted. Does nothing while it is
    /// running, and for ten minutes after it found nothing to delete or gained nothing: looking
    /// through all folders is work. Stops where it is when the storage box is entered, when this is
    /// no longer chosen or another limit is, and when the clock is set back.
    void makeRoom(qint64 wantedFreeBytes, std::vector<CameraAddress> cameras);

Q_SIGNALS:
    void imagesDeleted(velmora::CameraAddress camera);

private:
    struct Candidate
    {
        WallTime date;
        CameraAddress camera;
        QByteArray name;

        bool operator<(const Candidate &other) const
        {
            return std::tie(date, camera, name) < std::tie(other.date, other.camera, other.name);
        }
    };

    /// A camera's folder when it was looked through.
    struct Looked
    {
        QString path;
        QByteArray newest;
    };

    /// What a run goes by; when it has changed, another run must look again.
    struct Grounds
    {
        StorageUse use;
        WallTime began; // universal time
        int limitMegabytes = 0;
    };

    QCoro::Task<> run(qint64 wantedFreeBytes, std::vector<CameraAddress> cameras);
    QCoro::Task<> look(CameraAddress camera, Grounds grounds);
    QCoro::Task<bool> removeOldest(qint64 wantedFreeBytes, Grounds grounds);
    [[nodiscard]] bool mayGoOn(const Grounds &grounds) const;
    void take(const Candidate &candidate, const FolderFiles &folder);
    [[nodiscard]] std::optional<qint64> freeBytes() const;
    [[nodiscard]] bool isEnough(qint64 wantedFreeBytes) const;
    bool remove(const Candidate &candidate);
    void record(const Candidate &candidate);

    const CameraTable &table_;
    StorageFolder &storage_;
    Clock &clock_;
    TaskScope &scope_;
    HealthOptions options_;
    WorkSlice slice_;
    std::set<Candidate> oldest_;
    PerCamera<Looked> looked_;
    std::chrono::milliseconds restsUntil_{}; // by the monotonic clock
    bool running_ = false;
};

} // namespace velmora
