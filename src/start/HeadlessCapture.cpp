#include "start/HeadlessCapture.h"

#include "cameras/CameraChoices.h"

#include <QCoreApplication>

#include <cstdio>
#include <utility>

namespace velmora {
namespace {

// The kind of a failure: its sentence without sizes and times, which differ from one failure to the
// next. Most sentences are libcurl's, the system's or ffmpeg's own, and tell more kinds apart than
// a list of ours could.
QString kindOf(QString reason)
{
    reason.removeIf([](QChar c) { return c.isDigit(); });
    return reason;
}

} // namespace

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
                say(QStringLiteral("stored %1 %2").arg(title(camera), fileName));
            });
    connect(&engine_.store(), &ImageStore::settled, this, &HeadlessCapture::flush);
    connect(&health_, &HealthEngine::noticed, this, &HeadlessCapture::print);
    connect(&engine_.store(), &ImageStore::cameraFailed, this, &HeadlessCapture::reportFailure);
    connect(&engine_.store(), &ImageStore::cameraAnswered, this, [this](CameraAddress camera) {
        ++good_;
        if (failures_.remove(identity(camera)) > 0) {
            say(QStringLiteral("good again ") + title(camera));
        }
    });
    connect(&engine_.store(), &ImageStore::undatedNoticed, this, [this](CameraAddress camera) {
        QTextStream(stderr) << "velmora: " << undatedNotice(settings(), camera)
                            << "; so does --set camera." << cameraText(camera) << ".keep=differing"
                            << Qt::endl;
    });
    connect(&engine_.scheduler(), &Scheduler::passEnded, this, &HeadlessCapture::reportPass);
    connect(&engine_.problems(), &Problems::warned, this,
            [](const QString &text) { QTextStream(stderr) << "velmora: " << text << Qt::endl; });
}

// From the first pass on; a start that is refused gives its own reason.
void HeadlessCapture::reportStandstills()
{
    standstill_ = engine_.scheduler().standstill();
    connect(&engine_.scheduler(), &Scheduler::standstillChanged, this, [this] {
        const QString text = engine_.scheduler().standstill();
        if (text != std::exchange(standstill_, text)) {
            say(text.isEmpty() ? QStringLiteral("The capture goes on") : text);
        }
    });
}

SettingsSnapshot HeadlessCapture::settings() const
{
    return engine_.settings().snapshot();
}

QString HeadlessCapture::title(CameraAddress camera) const
{
    return cameraTitle(engine_.settings(), camera);
}

// With a different address, a row has a different camera.
QString HeadlessCapture::identity(CameraAddress camera) const
{
    return cameraText(camera) + u' ' + engine_.table().url(camera);
}

void HeadlessCapture::say(const QString &text)
{
    hasNews_ = true;
    print(text);
}

// A line comes out once the settings hold what it tells of.
void HeadlessCapture::print(const QString &text)
{
    out_ << text << '\n';
    if (!engine_.settings().isGathering()) {
        flush();
    }
}

// After a failure the stream would write nothing more, and keep all that comes: a full disk may
// have room again.
void HeadlessCapture::flush()
{
    out_.flush();
    out_.resetStatus();
}

// The same failure recurs at every pass while a camera has no image; it is reported once.
void HeadlessCapture::reportFailure(CameraAddress camera, const QString &reason)
{
    ++failed_;
    const QString kind = kindOf(reason);
    if (failures_.value(identity(camera)) != kind) {
        failures_.insert(identity(camera), kind);
        const bool isNamed = !cameraName(settings(), camera).isEmpty();
        say(QStringLiteral("failed %1%2 %3")
                .arg(title(camera), isNamed ? QStringLiteral(":") : QString(), reason));
    }
}

// A camera that was given up neither failed nor answered.
void HeadlessCapture::reportPass()
{
    ++pass_;
    if (std::exchange(hasNews_, false) || passesLeft_) {
        out_ << "pass " << pass_ << ": " << stored_ << " stored, " << failed_ << " failed, "
             << good_ - stored_ << " unchanged\n";
        flush();
    }
    good_ = stored_ = failed_ = 0;
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
    engine_.storage().testSA();
    if (engine_.storage().lastCheck() == StorageCheck::Missing) {
        QTextStream(stderr) << "velmora: the storage folder " << engine_.storage().inForce()
                            << " does not exist. Make it, or choose another in the main window."
                            << Qt::endl;
        return false;
    }
    reportStandstills();
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

// Whatever is thrown on the way out, the program ends.
void HeadlessCapture::leaveAfterError(const QString &text)
{
    // Before the text is shown: it may not reach anyone.
    if (errorExit_.begin([this] { shutdown_.launch(leave()); })) {
        engine_.problems().warn(text);
    }
}

QCoro::Task<> HeadlessCapture::leave()
{
    co_await engine_.close();
    QCoreApplication::quit();
}

} // namespace velmora
