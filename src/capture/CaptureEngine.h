// All the parts of the capture, put together: the same with windows and without.
#pragma once

#include "base/Clock.h"
#include "base/NativePaths.h"
#include "base/TaskScope.h"
#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"
#include "capture/Conformity.h"
#include "capture/HttpClient.h"
#include "capture/ImageStore.h"
#include "capture/ReadAhead.h"
#include "capture/Retention.h"
#include "capture/Scheduler.h"
#include "capture/StorageWatch.h"
#include "settings/DebugSwitch.h"

#include <QTimer>

namespace velmora {

/// Builds the parts in order of dependency and ends them in reverse. close() must have finished
/// before the engine is destroyed.
class CaptureEngine : public QObject
{
    Q_OBJECT

public:
    /// programFolder: native path. Clock and source outlive the engine.
    CaptureEngine(const QString &programFolder, Clock &clock, PictureSource &source);

    [[nodiscard]] const SettingsFile &settings() const { return settings_; }

    [[nodiscard]] const NativePaths &paths() const { return paths_; }

    [[nodiscard]] EventLog &log() { return log_; }

    [[nodiscard]] Problems &problems() { return problems_; }

    [[nodiscard]] DebugSwitch &debugSwitch() { return debugSwitch_; }

    [[nodiscard]] StorageFolder &storage() { return storage_; }

    [[nodiscard]] const CameraTable &table() const { return table_; }

    [[nodiscard]] CaptureOptions &options() { return options_; }

    [[nodiscard]] ImageStore &store() { return store_; }

    [[nodiscard]] Scheduler &scheduler() { return scheduler_; }

    [[nodiscard]] QTimer &timer() { return timer_; }

    [[nodiscard]] Clock &clock() { return clock_; }

    [[nodiscard]] Conformity &conformity() { return conformity_; }

    [[nodiscard]] Retention &retention() { return retention_; }

    [[nodiscard]] TaskScope &scope() { return scope_; }

    /// Starts a coroutine, which close() joins.
    void launch(QCoro::Task<> task) { scope_.launch(std::move(task)); }

    /// Tells the user what makes the settings hard to work with.
    void checkSettings();

    /// Loads the start values and, once the storage folder has been checked, watches over it.
    void start();

    /// Another program has changed the settings: takes over those that are held here. Does nothing
    /// before they are loaded.
    void adoptSettings();

    /// For fetching outside the capture.
    [[nodiscard]] CameraRequests &requests() { return requests_; }

    [[nodiscard]] PictureSource &source() { return source_; }

    /// Gives up whatever is still running and waits for it to end.
    QCoro::Task<> close();

Q_SIGNALS:
    /// Anyone who holds settings is to read them again.
    void settingsAdopted();

private:
    void clearStrayFiles(const StorageState &state);

    Clock &clock_;
    PictureSource &source_;
    SettingsFile settings_;
    NativePaths paths_;
    EventLog log_;
    Problems problems_;
    DebugSwitch debugSwitch_;
    CameraTable table_;
    StorageFolder storage_;
    CaptureOptions options_;
    CameraRequests requests_;
    TaskScope scope_;
    ReadAhead readAhead_;
    ImageStore store_;
    QTimer timer_;
    Scheduler scheduler_;
    Conformity conformity_;
    Retention retention_;
    StorageWatch watch_;
    QString clearedFolder_;
};

} // namespace velmora
