// The engine that captures a program folder's cameras, with its window open: the basis of most
// whole-program measurements.
#pragma once

#include "Cameras.h"
#include "Measures.h"
#include "base/DesktopOpener.h"
#include "capture/CaptureEngine.h"
#include "ui/Interface.h"

#include <QElapsedTimer>
#include <QTimer>

namespace velmora::bench {

/// The engine with its main window shown.
class House
{
public:
    explicit House(const QString &programFolder);
    Q_DISABLE_COPY_MOVE(House)
    ~House();

    CaptureEngine &engine() { return engine_; }

    CaptureView &view() { return view_; }

    /// Ends what runs in the engine's scope, before anything that it uses ends.
    void close();

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

} // namespace velmora::bench
