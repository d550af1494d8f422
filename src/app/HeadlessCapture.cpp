#include "app/HeadlessCapture.h"

#include <QCoreApplication>

#include <cstdio>
#include <utility>

namespace velmora {

HeadlessCapture::HeadlessCapture(CaptureEngine &engine, MailSender &sender,
                                 std::optional<int> passes)
    : engine_(engine)
    , health_(engine, sender)
    , passesLeft_(passes)
    , out_(stdout)
    , shutdown_([this](const QString &text) { leaveAfterError(text); })
{
    connectReports();
}

void HeadlessCapture::connectReports()
{
    connect(&engine_.store(), &ImageStore::imageStored, this,
            [this](CameraAddress camera, const QString &fileName) {
                ++stored_;
                out_ << "stored " << camera.group << ':' << camera.row << ' ' << fileName
                     << Qt::endl;
            });
    connect(&engine_.store(), &ImageStore::cameraFailed, this,
            [this](CameraAddress camera, const QString &reason) {
                ++failed_;
                out_ << "failed " << camera.group << ':' << camera.row << ' ' << reason << Qt::endl;
            });
    connect(&health_, &HealthEngine::noticed, this,
            [this](const QString &text) { out_ << text << Qt::endl; });
    connect(&engine_.store(), &ImageStore::loaded, this, [this] { ++loaded_; });
    connect(&engine_.scheduler(), &Scheduler::passEnded, this, &HeadlessCapture::reportPass);
    connect(&engine_.problems(), &Problems::warned, this,
            [](const QString &text) { QTextStream(stderr) << "velmora: " << text << Qt::endl; });
}

void HeadlessCapture::reportPass()
{
    ++pass_;
    if (loaded_ > 0 || passesLeft_) {
        out_ << "pass " << pass_ << ": " << stored_ << " stored, " << failed_ << " failed, "
             << loaded_ - stored_ - failed_ << " unchanged" << Qt::endl;
    }
    loaded_ = stored_ = failed_ = 0;
    if (passesLeft_ && --*passesLeft_ == 0 && !ending_) {
        ending_ = true;
        QMetaObject::invokeMethod(
            this, [this] { shutdown_.launch(leave()); }, Qt::QueuedConnection);
    }
}

bool HeadlessCapture::start()
{
    engine_.debugSwitch().load();
    engine_.checkSettings();
    engine_.storage().load();
    engine_.options().load();
    engine_.page().load();
    engine_.storage().testSA();
    if (engine_.storage().lamp() == LampColour::Red) {
        QTextStream(stderr) << "velmora: the storage folder " << engine_.storage().text()
                            << " does not exist. Make it, or choose another in the main window."
                            << Qt::endl;
        return false;
    }
    engine_.start();
    health_.start();
    engine_.launch(engine_.scheduler().Timer_Timer());
    return true;
}

void HeadlessCapture::end()
{
    if (ending_) {
        engine_.scheduler().giveUp();
        return;
    }
    ending_ = true;
    shutdown_.launch(finish());
}

QCoro::Task<> HeadlessCapture::finish()
{
    co_await engine_.scheduler().lastTick();
    co_await leave();
}

// Whatever is thrown on the way out, the program does not stay.
void HeadlessCapture::leaveAfterError(const QString &text)
{
    engine_.problems().warn(text);
    if (std::exchange(leavingAtOnce_, true)) {
        QCoreApplication::quit();
        return;
    }
    shutdown_.launch(leave());
}

QCoro::Task<> HeadlessCapture::leave()
{
    co_await engine_.close();
    QCoreApplication::quit();
}

} // namespace velmora
