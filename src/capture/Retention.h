// Deletes a camera's images after one month, when its box says so.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "base/WorkSlice.h"
#include "cameras/StorageFolder.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <array>
#include <chrono>
#include <deque>
#include <optional>

namespace velmora {

class OldImages;

/// Each camera's folder is gone through at most once an hour. While the storage box is being edited
/// nothing is deleted; a folder interrupted by that, or by the clock being set back, is gone
/// through again. Nothing more is deleted once the camera's box is unticked or its row has another
/// camera or none. A camera folder that is a link is left alone, since it may lead anywhere.
class Retention : public QObject
{
    Q_OBJECT

public:
    /// The scope outlives this object and is joined before it is destroyed.
    Retention(const CameraTable &table, StorageFolder &storage, EventLog &log, Clock &clock,
              TaskScope &scope);

    /// The program has started: goes through the folders of all cameras.
    void begin();

    /// An image of this camera was stored: goes through its folder, unless that was done less than
    /// an hour ago.
    void follow(CameraAddress camera);

    /// The program is ending: work under way may go on for a short while.
    void end();

Q_SIGNALS:
    /// At least one image in the camera's folder has been deleted.
    void imagesDeleted(velmora::CameraAddress camera);

private:
    struct Turn;
    using Moment = std::optional<std::chrono::milliseconds>; // by the monotonic clock

    void request(const SettingsSnapshot &settings, CameraAddress camera);
    [[nodiscard]] bool isDue(CameraAddress camera) const;
    [[nodiscard]] bool isOver() const;
    QCoro::Task<> run();
    QCoro::Task<> clear(CameraAddress camera);
    QCoro::Task<bool> mayGoOn(Turn *turn);
    QCoro::Task<bool> mayDelete(Turn *turn);
    [[nodiscard]] bool lookAtOthers(Turn &turn) const;
    [[nodiscard]] bool mustBeginAgain(const Turn &turn) const;
    [[nodiscard]] bool isStillWanted(const Turn &turn) const;
    void end(const Turn &turn);
    void report(CameraAddress camera, const OldImages &images);

    const CameraTable &table_;
    StorageFolder &storage_;
    EventLog &log_;
    Clock &clock_;
    TaskScope &scope_;
    WorkSlice slice_;
    std::deque<CameraAddress> waiting_;
    PerCamera<Moment> lastTurns_;
    Moment deadline_;
    bool running_ = false;
};

} // namespace velmora
