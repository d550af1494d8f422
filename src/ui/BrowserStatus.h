// The foot of the image browser's window: the seconds to the next capture, how many images were
// stored and which camera the last one is from, and the line that says what happened.
#pragma once

#include "cameras/CameraAddress.h"
#include "ui/ClickLabel.h"
#include "ui/StatusLine.h"
#include "view/CaptureStatus.h"

#include <QTimer>

namespace velmora {

class BrowserStatus : public QObject
{
    Q_OBJECT

public:
    struct Widgets
    {
        ClickLabel &ctrT;
        QLabel &NbCapt;
        QLabel &Capt;
        QLabel &txtLog;
    };

    /// Everything passed in outlives the object.
    BrowserStatus(const Widgets &widgets, const CaptureStatus &status);

    void showStored(CameraAddress camera);
    void showFailed(const QString &camera, const QString &reason);

    /// A message for the user.
    void showMessage(const QString &text) { line_.showMessage(text); }

    /// A message that is to be read beside a hundred cameras: it stays for a minute, whatever the
    /// capture does.
    void showNotice(const QString &text);

    /// The outcome of a search; an empty text when it found the image.
    void showSearch(const QString &text);

    /// A lasting remark on the camera on show; empty for none.
    void keep(const QString &text) { line_.keep(text); }

    /// Shows why nothing is captured, if nothing is.
    void showStandstill();

private:
    Widgets widgets_;
    const CaptureStatus &status_;
    StatusLine line_;
    QTimer *notice_; // of the line
    int stored_ = 0;
};

} // namespace velmora
