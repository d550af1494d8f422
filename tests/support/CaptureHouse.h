// The program's own capture in a temporary program folder, with the test's clock and source of
// pictures, and what windows would show of it.
#pragma once

#include "capture/CaptureEngine.h"
#include "support/FakeClock.h"
#include "support/TempTree.h"
#include "view/CaptureView.h"

#include <utility>

namespace velmora::test {

enum class FirstCheck { Done, Outstanding };

/// The services are open to the test. The storage folder C:\in exists, the log is on, and a tick
/// lasts a minute, so that the timer never ticks on its own.
class CaptureHouse : public QObject
{
public:
    CaptureHouse(PictureSource &source, FakeClock &fakeClock,
                 FirstCheck storageCheck = FirstCheck::Done);

    /// The engine's clock is another, which goes as the fake one does.
    CaptureHouse(PictureSource &source, FakeClock &fakeClock, Clock &engineClock,
                 FirstCheck storageCheck = FirstCheck::Done);
    Q_DISABLE_COPY_MOVE(CaptureHouse)

    /// Gives up what is still running.
    ~CaptureHouse() override;

    /// Gives a row an address and switches its group on.
    void addCamera(CameraAddress camera, const QString &url) const;

    /// Stored value of a camera, by the word of its key.
    [[nodiscard]] QString value(QStringView word, CameraAddress camera) const;
    void setValue(QStringView word, CameraAddress camera, const QString &value) const;

    /// Selects a group's tab.
    void showGroup(int group);

    /// One tick, until its pass has ended.
    void tick();

    /// One tick, which goes on as the test advances the clock.
    void beginTick();

    /// Loads one camera, until done.
    void load(CameraAddress camera);

    /// Loads one camera; goes on as the test advances the clock.
    void beginLoad(CameraAddress camera);

    /// Runs the event loop until nothing is left to do.
    void finish();

    /// Folder of a camera, relative to the tree.
    [[nodiscard]] QString folder(CameraAddress camera) const;

    /// Names of the files in it; none if it does not exist.
    [[nodiscard]] QStringList images(CameraAddress camera) const;

    /// Puts a file into a camera's folder.
    void putImage(CameraAddress camera, const QString &name, const QByteArray &bytes = "old") const;

    /// The log, each line without its time of day.
    [[nodiscard]] QString logText() const;

    /// What a caption has shown, in order.
    [[nodiscard]] QStringList shown(Caption caption) const;

    /// Everything that was shown by any caption, reported as a failure, or warned of.
    [[nodiscard]] QStringList allTexts() const { return texts_; }

    /// "group:row" of the images stored, in order.
    [[nodiscard]] const QStringList &stored() const { return stored_; }

    /// "group:row" of the cameras that failed, in order.
    [[nodiscard]] const QStringList &failed() const { return failed_; }

    TempTree tree;
    FakeClock &clock;
    CaptureEngine engine;
    CaptureView view;

    // These are parts of those two.
    const SettingsFile &settings;
    const NativePaths &paths;
    EventLog &log;
    Problems &problems;
    const CameraTable &table;
    StorageFolder &storage;
    CaptureOptions &options;
    TaskScope &scope;
    ImageStore &store;
    QTimer &timer;
    Scheduler &scheduler;
    CameraPage &page;
    CaptureStatus &status;

private:
    void record();
    void launchLoad(CameraAddress camera);

    QList<std::pair<Caption, QString>> captions_;
    QStringList texts_;
    QStringList stored_;
    QStringList failed_;
};

/// "http://cam/g/r/picture.jpg" of a camera.
[[nodiscard]] QString cameraUrl(CameraAddress camera);

} // namespace velmora::test
