// The clock of the program: a timer that drives passes over the hundred cameras and decides which
// of them are due.
#pragma once

#include "base/Gate.h"
#include "capture/CaptureOptions.h"
#include "capture/ImageStore.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>

#include <cstddef>
#include <functional>
#include <optional>

namespace velmora {

class Scheduler : public QObject
{
    Q_OBJECT

public:
    /// What driving the capture takes; all of it outlives the scheduler.
    struct Uses
    {
        const CameraTable &table;
        StorageFolder &storage;
        CaptureOptions &options;
        ImageStore &store;
        EventLog &log;
        Clock &clock;
        TaskScope &scope; // ticks run in it
        QTimer &timer;    // drives the ticks
    };

    explicit Scheduler(const Uses &uses);

    /// The log names a camera by the address that is shown in the same row of the group on screen.
    /// Whoever shows one says here which it is, by the row, and takes that back with an empty
    /// function before it goes.
    void setShownAddress(std::function<QString(int)> address)
    {
        shownAddress_ = std::move(address);
    }

    /// Why nothing is captured, for people; empty while the capture runs.
    [[nodiscard]] QString standstill() const;

    /// Start values: the tick counter stands at 55, so that fixed cameras come five ticks later.
    void start();

    /// Sets the timer's interval from the tick length, which is brought into 1 to 60 seconds.
    void RegleTempo();

    /// One tick, as the timer gives it. Does nothing while a pass runs.
    QCoro::Task<> Timer_Timer();

    /// The tick of the start: as one of the timer, but put off while the capture is held.
    QCoro::Task<> firstTick();

    /// One pass over all cameras in the order of the table. While the box of the storage folder is
    /// being edited it waits in front of its next camera; a download in hand is given up, and that
    /// camera loaded afterwards.
    QCoro::Task<> ChargeUrl();

    /// Stops all timers.
    void ArretTimer();

    /// What a user may set to bring the next fixed pass nearer: ticks counted so far, 0 to 60.
    void setTickCounter(int count) { counter_ = count; }

    [[nodiscard]] int tickCounter() const { return counter_; }

    /// Holds the capture: no tick and no camera starts until resume(), whatever else would start
    /// the timer. A pass under way waits in front of its next camera. Calls nest: each suspend()
    /// wants its resume().
    void suspend();

    /// Ends what suspend() began: the pass goes on, and the timer runs if the storage folder lets
    /// it. Without a suspend() before it nothing happens.
    void resume();

    [[nodiscard]] bool isSuspended() const { return suspensions_ > 0; }

    /// The program ends: stops the timer, waits for a pass that runs, then runs one tick at which
    /// fixed cameras are due. While the capture is suspended no camera starts: a pass that waits
    /// ends without its other cameras, and there is no last one.
    QCoro::Task<> lastTick();

    /// Gives up the pass that runs and all that would come after it.
    void giveUp();

Q_SIGNALS:
    /// The camera is about to be loaded.
    void cameraLoading(velmora::CameraAddress camera);

    /// A load was given up: the lamp is again as it was before.
    void lampChanged(velmora::CameraAddress camera, velmora::LampColour colour);

    /// The timer ticks at this interval; 0 would be never.
    void intervalSet(std::chrono::milliseconds interval);

    /// A tick was counted; so many are left until fixed cameras are due.
    void ticked(int ticksLeft);

    /// No pass runs: the capture waits for its next tick.
    void waitBegan();

    /// Whether the capture stands still, or why, may be otherwise than before.
    void standstillChanged();

    void passEnded();

    /// All timers of the program are to stop.
    void timersStopped();

private:
    void ChargeOn();
    void ChargeOff();
    void beginEdit();
    void regulate();
    void startTimer();
    void countTick();
    [[nodiscard]] bool isFixedDue(CameraAddress address) const;
    [[nodiscard]] bool isAutomatic(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] bool isDue(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] bool mustLoad(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] std::optional<CameraSchedule> cameraToLoad(const SettingsSnapshot &settings,
                                                             CameraAddress address) const;
    bool readAhead(int fromIndex);
    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool mayStartCamera() const;
    QCoro::Task<> whileHeld();
    QCoro::Task<> pause(int index);
    QCoro::Task<int> walkTable();
    QCoro::Task<> load(CameraSchedule camera, CameraAddress address, int *index);
    void traceRow(const QString &text, CameraAddress address);

    Uses uses_;
    std::function<QString(int)> shownAddress_;
    Gate gate_; // shut while the capture is held
    int counter_ = 0;
    int suspensions_ = 0;
    quint64 interruptions_ = 0; // by the box of the storage folder
    quint64 readAheadAt_ = 0;   // that many of them
    PerCamera<bool> reached_;   // by the first pass
    bool firstPassDone_ = false;
    bool ticking_ = false;
    bool passing_ = false;
    bool ending_ = false;
    bool givenUp_ = false;
};

} // namespace velmora
