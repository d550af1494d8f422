// The motion alarm's window: its pictures, its scan and its test mail.
#include "ui/Alarm.h"

#include "ui/LentFocus.h"
#include "ui/ScreenRoom.h"
#include "ui/ToFront.h"
#include "ui/WindowKeys.h"
#include "ui_Alarm.h"

#include <QCloseEvent>

namespace velmora {

Alarm::Alarm(MotionAlarm &alarm, AlarmMail &mail)
    : alarm_(alarm)
    , mail_(mail)
    , ui_(std::make_unique<Ui::Alarm>())
{
    ui_->setupUi(this);
    resizeOnScreen(*this, size());
    ui_->iVide->setEmptyText(tr("Click to scan"));
    bindScan();
    bindMail();
    closeOnEscape(*this);
}

Alarm::~Alarm() = default;

void Alarm::bindScan()
{
    connect(&alarm_, &MotionAlarm::changed, this, &Alarm::showPicture);
    connect(&alarm_, &MotionAlarm::repaintWanted, this, [this] {
        ui_->iRef->repaint();
        ui_->iVar->repaint();
    });
    connect(ui_->iVide, &PictureView::clicked, &alarm_, &MotionAlarm::run);
    connect(ui_->iRef, &PictureView::resized, &alarm_,
            [this] { alarm_.setPixels(ui_->iRef->pixels()); });
}

void Alarm::bindMail()
{
    connect(ui_->Command1, &QAbstractButton::clicked, this,
            [this] { mail_.send(QStringLiteral("essai")); });
    connect(&mail_, &AlarmMail::began, this, &Alarm::showSending);
    connect(&mail_, &AlarmMail::ended, this, &Alarm::showEnd);
    connect(&mail_, &AlarmMail::sent, this, [this] { ui_->lStatus->setText(tr("Sent")); });
}

PictureView &Alarm::view(AlarmPicture which) const
{
    switch (which) {
    case AlarmPicture::Ref:
        return *ui_->iRef;
    case AlarmPicture::Var:
        return *ui_->iVar;
    default:
        return *ui_->iVide;
    }
}

void Alarm::showPicture(AlarmPicture which)
{
    const LoadedPicture &picture = alarm_.picture(which);
    view(which).showPicture(picture.path, picture.image);
}

void Alarm::showSending()
{
    disableButton(*ui_->Command1, *ui_->lStatus);
    ui_->lStatus->setText(tr("Sending…"));
}

// Unless the server has accepted it, which is said next.
void Alarm::showEnd()
{
    ui_->Command1->setEnabled(true);
    returnFocus(*ui_->lStatus, *ui_->Command1);
    ui_->lStatus->setText(tr("Not sent"));
}

void Alarm::present()
{
    bringToFront(*this);
}

void Alarm::closeEvent(QCloseEvent *event)
{
    alarm_.stop();
    event->accept();
}

} // namespace velmora
