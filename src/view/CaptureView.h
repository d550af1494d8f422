// What windows show of the capture and do with it, without their widgets. It listens to the
// capture, which runs just as well without it, and lends it the text of an address box for the log.
#pragma once

#include "capture/CaptureEngine.h"
#include "view/CameraPage.h"
#include "view/CameraTrial.h"
#include "view/CaptureStatus.h"
#include "view/LiveView.h"

namespace velmora {

/// The page of the camera table, the remarks on cameras, the captions, the live view, and the trial
/// of a camera. The engine must be closed before the view is destroyed.
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

    [[nodiscard]] LiveView &liveView() { return liveView_; }

    [[nodiscard]] CameraTrial &trial() { return trial_; }

private:
    /// What the capture does, behind the text of the step.
    enum class Step { Working, Waiting, Paused };

    /// Whose trouble is on show.
    enum class TroubleOf { Storing, LiveView };

    void followLiveView(LiveView &live);
    void followStore(ImageStore &store);
    void followLamps(ImageStore &store);
    void followScheduler(Scheduler &scheduler);
    void showBegin(CameraAddress camera, const QString &address);
    void showStored(const QString &fileName);
    void showTicksLeft(int ticks);
    void showStandstill();
    [[nodiscard]] bool standsStill() const;
    void showIdle();
    void showIdle(Step step);
    void showWork(const QString &text);
    void showTrouble(TroubleOf source, const QString &text);
    void showLiveTrouble(const QString &text);

    CaptureEngine &engine_;
    CameraPage page_;
    CaptureStatus status_;
    LiveView liveView_;
    CameraTrial trial_;
    Step step_ = Step::Working;
    TroubleOf troubleOf_ = TroubleOf::Storing;
};

} // namespace velmora
