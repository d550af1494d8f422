// A program folder with a hundred cameras, the engine that captures them with its window open, and
// the cameras' server: the basis of the whole-program measurements.
#pragma once

#include "base/DesktopOpener.h"
#include "capture/CaptureEngine.h"
#include "ui/Interface.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>

namespace velmora::bench {

/// The server process of a measurement.
class Cameras
{
public:
    /// server: path of bench_camera_server.
    Cameras(const QString &server, int delayMs, int bodyBytes);
    Q_DISABLE_COPY_MOVE(Cameras)
    ~Cameras();

    [[nodiscard]] QString url(int group, int row, bool dead = false) const;

private:
    QProcess process_;
    int port_ = 0;
};

/// A temporary program folder.
class Folder
{
public:
    /// url: address of each camera; all groups are switched on.
    explicit Folder(const std::function<QString(int group, int row)> &url);

    [[nodiscard]] QString path() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
};

/// The engine with its main window shown.
class House
{
public:
    explicit House(const QString &programFolder);
    Q_DISABLE_COPY_MOVE(House)
    ~House();

    CaptureEngine &engine() { return engine_; }

    CaptureView &view() { return view_; }

    /// Runs one tick at which every camera is due; returns milliseconds.
    double passMs();

    /// Runs one tick at which no camera in fixed mode is due.
    void idleTick();

    /// Waits for the window's first painting, which takes longer than any later turn.
    void paintFirst();

    /// Longest time between two turns of the event loop since the last call; milliseconds.
    double longestGapMs();

    /// The most processor time between two turns of the event loop since the last call: what the
    /// program itself uses, whatever else runs on the machine.
    double longestTurnMs();

private:
    void run(QCoro::Task<> task);

    SystemClock clock_;
    HttpClient http_;
    CaptureEngine engine_;
    CaptureView view_;
    XdgOpener opener_;
    Interface window_;
    QTimer gapTimer_;
    QElapsedTimer gap_;
    qint64 longestGapNs_ = 0;
    double turnBeganMs_ = 0;
    double longestTurnMs_ = 0;
};

/// Processor time of this process so far; milliseconds.
[[nodiscard]] double processorMs();

/// The median.
[[nodiscard]] double median(QList<double> values);

} // namespace velmora::bench
