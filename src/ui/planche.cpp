#include "ui/planche.h"

#include "ui_planche.h"

#include <QCloseEvent>

namespace velmora {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kMaxLines = 200;

QString cameraText(CameraAddress camera)
{
    return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
}

} // namespace

planche::planche(const SettingsFile &settings, EventLog &log)
    : settings_(settings)
    , log_(log)
    , ui_(std::make_unique<Ui::planche>())
{
    ui_->setupUi(this);
    connect(ui_->cSetUp, &QAbstractButton::clicked, this, &planche::setUpWanted);
    connect(ui_->Mini, &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(ui_->Quitter, &QAbstractButton::clicked, this, &QWidget::close);
}

planche::~planche() = default;

void planche::moveTo(WindowPlace place)
{
    move(place.left / kTwipsPerPixel, place.top / kTwipsPerPixel);
}

void planche::showStored(CameraAddress camera, const QString &fileName)
{
    ++stored_;
    ui_->NbCapt->setText(QString::number(stored_));
    ui_->Capt->setText(cameraText(camera));
    showMessage(tr("Image stored"));
    addLine(tr("Camera %1   %2").arg(cameraText(camera), fileName));
}

void planche::showFailed(CameraAddress camera, const QString &reason)
{
    showMessage(tr("Camera %1: %2").arg(cameraText(camera), reason));
}

void planche::showMessage(const QString &text)
{
    ui_->txtLog->setText(text);
    ui_->txtLog->setToolTip(text);
}

void planche::addLine(const QString &text)
{
    ui_->lastImages->insertItem(0, text);
    delete ui_->lastImages->takeItem(kMaxLines);
}

void planche::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayClose_);
    if (!mayClose_) {
        Q_EMIT closeWanted();
        return;
    }
    writePlace(settings_, kBrowserPlace, {y() * kTwipsPerPixel, x() * kTwipsPerPixel});
    log_.trace(QStringLiteral("Planche Form_Unload"));
}

} // namespace velmora
