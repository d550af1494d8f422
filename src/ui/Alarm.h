// The motion alarm's window: the pair of images that a scan compares, and a test mail.
//
//   Alarm
//     iRef  iVar
//     iVide  Command1  lStatus
#pragma once

#include "tools/AlarmMail.h"
#include "tools/MotionAlarm.h"

#include <QWidget>

#include <memory>

namespace Ui {
class Alarm;
}

namespace velmora {

class PictureView;

/// A scan ends with the window; a mail on its way does not.
class Alarm : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the window.
    Alarm(MotionAlarm &alarm, AlarmMail &mail);
    Q_DISABLE_COPY_MOVE(Alarm)
    ~Alarm() override;

    /// Shows the window in front.
    void present();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void bindScan();
    void bindMail();
    void showPicture(AlarmPicture which);
    void showSending();
    void showEnd();
    [[nodiscard]] PictureView &view(AlarmPicture which) const;

    MotionAlarm &alarm_;
    AlarmMail &mail_;
    std::unique_ptr<Ui::Alarm> ui_;
};

} // namespace velmora
