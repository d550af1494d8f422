// How each of the hundred cameras delivers: listens to the capture, knows it again after a restart,
// and counts in the background what nobody knows.
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

class HealthBook : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object; the scope is joined before it goes.
    HealthBook(const CameraTable &table, const StorageFolder &storage, Clock &clock,
               TaskScope &scope);

    /// Takes what is stored, and begins to count the rest.
    void load();

    /// Stores what has changed since the last time.
    void save();

    /// The settings that name the cameras.
    [[nodiscard]] const SettingsFile &settings() const { return table_.settings(); }

    [[nodiscard]] const CameraHealth &camera(CameraAddress camera) const;

    /// Addresses of the cameras that are configured, in the order of the table.
    [[nodiscard]] std::vector<CameraAddress> cameras() const;

    /// For people: group, row, and the address without credentials.
    [[nodiscard]] QString title(CameraAddress camera) const;

    /// Reads anew which cameras there are.
    void followTable();

    /// Of all cameras together.
    [[nodiscard]] qint64 bytesADay() const;

    /// Now, in universal time.
    [[nodiscard]] Moment now() const;

    /// How long nothing new came from a camera, in time that has really passed while the program
    /// ran: a clock that is set does not count. Nothing for a camera that nothing is known of.
    [[nodiscard]] std::optional<std::chrono::seconds> quiet(CameraAddress camera) const;

    /// Time in which no camera could be seen is taken from all of them.
    void forgive(std::chrono::milliseconds duration);

    /// A camera that nobody asks for images is not quiet: its time begins anew.
    void excuse(CameraAddress camera);

    /// A camera counts as late from now on, or no longer.
    void setLate(CameraAddress camera, bool late);

    /// The capture's news.
    void addImage(CameraAddress camera, const QString &fileName);
    void addFailure(CameraAddress camera, const QString &reason);

    /// Images were deleted: counts the folder anew.
    void recount(CameraAddress camera);

Q_SIGNALS:
    /// What is known of a camera has changed.
    void changed(velmora::CameraAddress camera);

    /// Other cameras than before.
    void tableChanged();

    /// An image came from a camera that was late.
    void cameBack(velmora::CameraAddress camera);

private:
    struct Seen // of this run
    {
        std::optional<std::chrono::milliseconds> quietSince; // of the clock that only advances
        QString title;
        bool isConfigured = false;
    };

    [[nodiscard]] CameraHealth &known(CameraAddress camera);
    void takeCamera(const SettingsSnapshot &settings, CameraAddress camera);
    void anchor(CameraAddress camera);
    void startCounting(CameraAddress camera);
    QCoro::Task<> countWaiting();
    QCoro::Task<> count(CameraAddress camera);
    void change(CameraAddress camera);
    void addSuccess(CameraAddress camera);

    const CameraTable &table_;
    const StorageFolder &storage_;
    Clock &clock_;
    TaskScope &scope_;
    WorkSlice slice_;
    CameraHealths healths_;
    PerCamera<Seen> seen_;
    std::deque<CameraAddress> toCount_;
    bool counting_ = false;
    bool isChanged_ = false;
    bool maySave_ = true;
};

} // namespace velmora
