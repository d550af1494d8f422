// The program with its windows: their order at start-up, how they lead to one another, and the end.
#pragma once

#include "app/ErrorExit.h"
#include "health/HealthEngine.h"
#include "tools/BrowserEngine.h"
#include "tools/ImportEngine.h"
#include "ui/Alarm.h"
#include "ui/CalendarWindow.h"
#include "ui/CameraListWindow.h"
#include "ui/CameraSheet.h"
#include "ui/FilmKeep.h"
#include "ui/HealthWindow.h"
#include "ui/Interface.h"
#include "ui/MessageBoxes.h"
#include "ui/TitleBox.h"
#include "ui/TopMost.h"
#include "ui/Zoom.h"
#include "ui/fCine.h"
#include "ui/frmImport.h"
#include "ui/mOuvreLien.h"
#include "ui/planche.h"
#include "view/CaptureView.h"

#include <memory>

namespace velmora {

class Program : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the program.
    Program(CaptureEngine &engine, DesktopOpener &opener, MailSender &sender);

    /// Runs the start-up, which ends with the first pass.
    void start();

    /// Brings the window that the user sees to the front.
    void bringToFront();

    /// Ends the program after a last pass, during which the closing box is shown; a second call
    /// gives that pass up.
    void end();

    [[nodiscard]] const HealthBook &health() { return health_.book(); }

private:
    void connectMain();
    void connectSheet();
    void connectBrowser();
    void connectAlarm();
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
    Interface interface_;
    CameraSheet sheet_;
    CameraListWindow list_;
    planche planche_;
    fCine film_;
    frmImport importWindow_;
    Alarm alarm_;
    CalendarWindow calendar_;
    HealthWindow healthWindow_;
    FilmKeep filmKeep_;
    Zoom zoom_;
    frmSplash splash_;
    frmQuitte closing_;
    bool ending_ = false;
    ErrorExit errorExit_;
    TaskScope shutdown_;
};

} // namespace velmora
