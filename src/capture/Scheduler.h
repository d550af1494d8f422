// The program's clockwork: a timer that drives passes over the hundred cameras and decides which of
// them are due.
#pragma once

#include "base/Gate.h"
#include "capture/CaptureOptions.h"
#include "capture/ImageStore.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>

#include <cstddef>
#include <functional>
#include <map>
#include <optional>

namespace velmora {

/// One hold of the capture, known by a number from suspend() to resume().
enum class Suspension : int {};

/// Owns when cameras are loaded: the tick counter, what holds the capture, and the pass under way,
/// of which there is never more than one. The composition starts and ends it; anyone may hold it
/// with suspend() and resume() and listen to its signals. It promises that cameras are loaded one
/// after another in the order of the table, that none is while the capture is held or the storage
/// folder cannot be used, and that each pass ends with `passEnded`.
class Scheduler : public QObject
{
    Q_OBJECT

public:
    /// What driving the capture uses; all of it outlives the scheduler.
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

    /// The log names a camera by the address shown in the same row of the group on screen. The
    /// object that shows them passes in a function from row to address, and an empty function
    /// before it is destroyed.
    void setShownAddress(std::function<QString(int)> address)
    {
        shownAddress_ = std::move(address);
    }

    /// Why nothing is captured, as a text for the user; empty while the capture runs.
    [[nodiscard]] QString standstill() const;

    /// The counter at the start: fixed cameras come due five ticks later.
    static constexpr int kStartTick = 55;

    /// Start values, the tick counter's among them.
    void start();

    /// Sets the timer's interval ("règle la temporisation") from the tick length, which is brought
    /// into 1 to 60 seconds.
    void RegleTempo();

    /// One tick of the capture timer. Does nothing while a pass is running.
    QCoro::Task<> Timer_Timer();

    /// The first tick after the start: like one of the timer, but put off while the capture is
    /// held.
    QCoro::Task<> firstTick();

    /// One pass over all cameras ("charge les URL") in the order of the table. While the storage
    /// box is being edited it waits before its next camera. A download under way is given up when
    /// the box is entered or another folder put in force, and its camera loaded again afterwards.
    QCoro::Task<> ChargeUrl();

    /// Stops all timers ("arrêt des timers").
    void ArretTimer();

    /// Lets a user bring the next fixed pass nearer: ticks counted so far, 0 to 60.
    void setTickCounter(int count) { counter_ = count; }

    /// Until fixed cameras are due.
    [[nodiscard]] int ticksLeft() const { return kLastTick - counter_; }

    /// Holds the capture: no tick and no camera starts until resume(), whatever else would start
    /// the timer. A pass under way waits before its next camera. There may be several at a time,
    /// and each needs its resume(). why: what standstill() says meanwhile, if no older one says
    /// why; empty where other texts say it.
    [[nodiscard]] Suspension suspend(const QString &why = {});

    /// Ends a suspension: after the last one the pass goes on, and the timer runs if the storage
    /// folder allows it. Does nothing for one that has ended.
    void resume(Suspension suspension);

    [[nodiscard]] bool isSuspended() const { return !suspensions_.empty(); }

    /// A pass has reached all cameras; one that was cut short has not.
    [[nodiscard]] bool isFirstPassDone() const { return firstPassDone_; }

    /// When the last pass began that has asked all cameras in fixed mode, by the monotonic clock.
    [[nodiscard]] std::optional<std::chrono::milliseconds> lastRound() const { return lastRound_; }

    /// The program is ending: stops the timer, waits for a running pass, then runs one tick at
    /// which fixed cameras are due. While the capture is suspended no camera starts: a waiting pass
    /// ends without its remaining cameras, and there is no last one.
    QCoro::Task<> lastTick();

    /// Gives up the running pass and all that would follow.
    void giveUp();

Q_SIGNALS:
    /// The camera is about to be loaded.
    void cameraLoading(velmora::CameraAddress camera);

    /// A load was given up: the lamp is back to what it was.
    void lampChanged(velmora::CameraAddress camera, velmora::LampColour colour);

    /// The timer ticks at this interval; 0 means never.
    void intervalSet(std::chrono::milliseconds interval);

    /// A tick was counted.
    void ticked();

    /// No pass is running: the capture waits for its next tick.
    void waitBegan();

    /// Whether the capture stands still, or why, may have changed.
    void standstillChanged();

    void passEnded();

    /// All timers of the program are to stop.
    void timersStopped();

private:
    /// A pass begins.
    void ChargeOn();

    /// A pass ends.
    void ChargeOff();

    static constexpr int kLastTick = 60; // the counter runs from 0 to this: 61 ticks a round

    void followStorage();
    void regulate();
    void startTimer();
    void countTick();
    [[nodiscard]] bool isFixedDue(CameraAddress address) const;
    [[nodiscard]] bool isAutomatic(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] bool isDue(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] bool mustLoad(const CameraSchedule &camera, CameraAddress address) const;
    [[nodiscard]] std::optional<CameraSchedule> cameraToLoad(const SettingsSnapshot &settings,
                                                             CameraAddress address) const;
    QCoro::Task<bool> readAhead(int fromIndex);
    bool readAheadSome(int fromIndex, int toIndex);
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
    std::map<Suspension, QString> suspensions_; // with their reasons, oldest first
    int lastSuspension_ = 0;                    // its number
    quint64 storageVersion_ = 0; // of the storage folder when transfers were last dropped for it
    quint64 readAheadAt_ = 0;    // storageVersion_ at the last read-ahead
    PerCamera<bool> reached_;    // by the first pass
    std::optional<std::chrono::milliseconds> lastRound_; // see lastRound()
    bool firstPassDone_ = false;
    bool ticking_ = false;
    bool passing_ = false;
    bool ending_ = false;
    bool givenUp_ = false;
};

} // namespace velmora
