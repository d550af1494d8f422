#include "ui/BrowserStatus.h"

#include "cameras/CameraChoices.h"

#include <chrono>

namespace velmora {
namespace {

constexpr std::chrono::minutes kNoticeTime{1};

} // namespace

BrowserStatus::BrowserStatus(const Widgets &widgets, const CaptureStatus &status)
    : widgets_(widgets)
    , status_(status)
    , line_(widgets.txtLog)
    , notice_(new QTimer(&widgets.txtLog))
{
    notice_->setSingleShot(true);
    notice_->setInterval(kNoticeTime);
    connect(notice_, &QTimer::timeout, this, [this] { line_.endNotice(); });
    holdSize(widgets_.ctrT, QStringLiteral("00"));
    holdSize(widgets_.NbCapt, QStringLiteral("000000"));
    holdSize(widgets_.Capt, QStringLiteral("0:0"));
    connect(&status_, &CaptureStatus::changed, this, [this](Caption caption, const QString &text) {
        if (caption == Caption::NextCycle) {
            widgets_.ctrT.setText(text);
        } else if (caption == Caption::Standstill) {
            line_.halt(text);
        }
    });
}

void BrowserStatus::showStored(CameraAddress camera)
{
    ++stored_;
    widgets_.NbCapt.setText(QString::number(stored_));
    widgets_.Capt.setText(cameraText(camera));
    line_.showCaptureEvent(tr("Image stored"));
}

void BrowserStatus::showFailed(const QString &camera, const QString &reason)
{
    line_.showCaptureEvent(tr("Camera %1: %2").arg(camera, reason));
}

void BrowserStatus::showNotice(const QString &text)
{
    line_.showNotice(text);
    notice_->start();
}

void BrowserStatus::showSearch(const QString &text)
{
    line_.showSearch(text);
}

void BrowserStatus::showStandstill()
{
    line_.showHalt();
}

} // namespace velmora
