// How each of the hundred cameras delivers: listens to the capture, remembers across restarts, and
// counts in the background what is not known.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "base/WorkSlice.h"
#include "cameras/StorageFolder.h"
#include "health/HealthOptions.h"
#include "health/HealthStore.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <deque>

namespace velmora {

/// Owns the records of all cameras and the file that keeps them. The image store's news
/// comes in by its signals, verdicts from HealthWatch, and code that adds or deletes images has the
/// folder counted again; all others read and listen. It promises that a record is that of the
/// camera whose address is stored now, that a row without a camera has none, and that counting
/// never holds up events.
class HealthBook : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object; the scope is joined before it is destroyed.
    HealthBook(const CameraTable &table, const StorageFolder &storage, Clock &clock,
               TaskScope &scope);

    /// Loads what is stored, and starts to count the rest.
    void load();

    /// Nothing is known of any camera before that.
    [[nodiscard]] bool isLoaded() const { return isLoaded_; }

    /// Stores what has changed since it was last called.
    void save();

    /// The settings that name the cameras.
    [[nodiscard]] const SettingsFile &settings() const { return table_.settings(); }

    [[nodiscard]] const CameraHealth &camera(CameraAddress camera) const;

    /// Addresses of the cameras that are configured, in the order of the table.
    [[nodiscard]] std::vector<CameraAddress> cameras() const;

    /// For messages: group, row, and the address without credentials.
    [[nodiscard]] QString title(CameraAddress camera) const;

    /// Reads again which cameras there are.
    void followTable();

    /// Of all cameras together.
    [[nodiscard]] qint64 bytesADay() const;

    /// Now, in universal time.
    [[nodiscard]] Moment now() const;

    /// How long nothing new has come from a camera, in time that has really passed while the
    /// program was running, whatever the clock was set to. Nothing for a camera about which nothing
    /// is known.
    [[nodiscard]] std::optional<std::chrono::seconds> quiet(CameraAddress camera) const;

    /// Does not count, for any camera, time during which none could be seen.
    void forgive(std::chrono::milliseconds duration);

    /// A camera that is not asked for images is not quiet: its time starts over.
    void excuse(CameraAddress camera);

    /// A camera counts as late from now on, or no longer.
    void setLate(CameraAddress camera, bool late);

    /// News from the capture.
    void addImage(CameraAddress camera, const QString &fileName);
    void addFailure(CameraAddress camera, const QString &reason);

    /// The camera answers again, whether or not its picture is new.
    void addSuccess(CameraAddress camera);

    /// A camera's images were not only captured, but deleted or brought in: counts its folder
    /// again.
    void recount(CameraAddress camera);

    /// The same for whichever cameras have this folder (native path).
    void recountFolder(const QString &folder);

    /// Counts the folders of all cameras again.
    void recountAll();

Q_SIGNALS:
    /// What is known about a camera has changed.
    void changed(velmora::CameraAddress camera);

    /// The set of cameras has changed.
    void tableChanged();

    /// A camera that was late has given an image.
    void cameBack(velmora::CameraAddress camera);

private:
    struct Seen // in this run
    {
        // By the monotonic clock.
        std::optional<std::chrono::milliseconds> quietSince;
        std::optional<std::chrono::milliseconds> from; // added, or excused, in this run
        QString title;
        QString url;
        bool isConfigured = false;
        bool isTried = false; // its count has begun
    };

    [[nodiscard]] CameraHealth &recordOf(CameraAddress camera);
    void catchUp(CameraAddress camera, const QString &folder);
    void hearFrom(CameraAddress camera);
    void takeCamera(const SettingsSnapshot &settings, CameraAddress camera);
    void anchor(CameraAddress camera);
    void startCounting(CameraAddress camera);
    QCoro::Task<> countWaiting();
    QCoro::Task<> count(CameraAddress camera);
    void change(CameraAddress camera);

    const CameraTable &table_;
    const StorageFolder &storage_;
    Clock &clock_;
    TaskScope &scope_;
    WorkSlice slice_;
    CameraHealths healths_;
    PerCamera<Seen> seen_;
    std::chrono::milliseconds forgiven_{0}; // in this run
    std::deque<CameraAddress> toCount_;
    bool counting_ = false;
    bool isChanged_ = false;
    bool isLoaded_ = false;
    bool maySave_ = true;
};

} // namespace velmora
