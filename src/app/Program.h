// The program with its windows: their order at start-up, what leads from one to another, and the
// end.
#pragma once

#include "app/CaptureEngine.h"
#include "ui/Interface.h"
#include "ui/MessageBoxes.h"
#include "ui/TitleBox.h"
#include "ui/TopMost.h"
#include "ui/planche.h"

#include <memory>

namespace velmora {

class Program : public QObject
{
    Q_OBJECT

public:
    explicit Program(CaptureEngine &engine, DesktopOpener &opener);

    /// Runs the start-up; it has ended when the first pass has.
    void start();

    /// Brings the window that the user sees to the front.
    void bringToFront();

    /// Where the slideshow's window stood last; known once the start-up has loaded the options.
    [[nodiscard]] WindowPlace slideshowPlace() const { return slideshowPlace_; }

    /// Ends the program once the last pass has run, with the closing box in the meantime; a second
    /// call gives that pass up.
    void end();

private:
    void connectWindows();
    void showSplash();
    void showSettings();
    void showImages();
    void hideWindows();
    QCoro::Task<> startUp();
    QCoro::Task<> Initialise();
    QCoro::Task<> lastPass();
    QCoro::Task<> leave();

    CaptureEngine &engine_;
    DesktopOpener &opener_;
    MessageBoxes messages_;
    Interface interface_;
    planche planche_;
    frmSplash splash_;
    frmQuitte closing_;
    WindowPlace slideshowPlace_;
    bool ending_ = false;
};

} // namespace velmora
