// The program with its windows: their order at start-up, how they lead to one another, and the end.
#pragma once

#include "health/HealthEngine.h"
#include "start/ErrorExit.h"
#include "tools/BrowserEngine.h"
#include "tools/ImportEngine.h"
#include "ui/MessageBoxes.h"
#include "ui/mOuvreLien.h"
#include "view/CaptureView.h"

#include <memory>

namespace velmora {

struct ProgramWindows;

class Program : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the program.
    Program(CaptureEngine &engine, DesktopOpener &opener, MailSender &sender);
    Q_DISABLE_COPY_MOVE(Program)
    ~Program() override;

    /// Runs the start-up, which ends with the first pass.
    void start();

    /// Brings the window that the user sees to the front.
    void bringToFront();

    /// Ends the program after a last pass, during which the closing box is shown; a second call
    /// gives that pass up.
    void end();

    [[nodiscard]] const HealthBook &health() { return health_.book(); }

Q_SIGNALS:
    /// The program has begun to end; no window comes back.
    void ending();

private:
    void connectMain();
    void connectSheet();
    void connectBrowser();
    void connectAlarm();
    void nameFilm();
    void tellUndated(CameraAddress camera);
    void connectKeeping();
    void keepFilm();
    void connectHealth();
    void showRoom();
    void goTo(CameraAddress camera);
    void connectConformity();
    void connectProblems();
    void showSplash();
    void showSettings();
    void showImages();
    void closeImages();
    void open(const QString &path);
    void hideWindows();
    QCoro::Task<> startUp();

    /// Loads the options at start-up.
    void Initialise();

    QCoro::Task<> lastPass();
    QCoro::Task<> giveUpAfter(std::chrono::milliseconds limit);
    QCoro::Task<> leave();
    QCoro::Task<> leaveAtOnce();
    void leaveAfterError(const QString &text);

    CaptureEngine &engine_;
    DesktopOpener &opener_;
    CaptureView view_;
    BrowserEngine images_;
    HealthEngine health_;
    ImportEngine import_;
    MessageBoxes messages_;
    mOuvreLien links_;
    std::unique_ptr<ProgramWindows> windows_;
    bool ending_ = false;
    ErrorExit errorExit_;
    TaskScope shutdown_;
};

} // namespace velmora
