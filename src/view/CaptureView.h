// What windows show of the capture, without their widgets. It only listens: the capture knows
// nothing of it, and runs just as well without.
#pragma once

#include "capture/CaptureEngine.h"
#include "view/CameraPage.h"
#include "view/CaptureStatus.h"

namespace velmora {

/// The page of the camera table, the remarks on cameras, and the captions.
class CaptureView : public QObject
{
    Q_OBJECT

public:
    /// The engine outlives the view.
    explicit CaptureView(CaptureEngine &engine);
    Q_DISABLE_COPY_MOVE(CaptureView)
    ~CaptureView() override;

    [[nodiscard]] CameraPage &page() { return page_; }

    [[nodiscard]] CaptureStatus &status() { return status_; }

    /// Also shows what these report.
    void follow(LiveView &live);
    void follow(Conformity &conformity);

private:
    void followStore(ImageStore &store);
    void followLamps(ImageStore &store);
    void followScheduler(Scheduler &scheduler);
    void showBegin(CameraAddress camera, const QString &address);
    void showStored(const QString &fileName);
    void showTicksLeft(int ticks);
    void showStandstill();
    [[nodiscard]] bool standsStill() const;
    [[nodiscard]] QString idleText() const;
    void showTrouble(const QString &before, const QString &now);

    CaptureEngine &engine_;
    CameraPage page_;
    CaptureStatus status_;
};

} // namespace velmora
