// Capture without windows: reports on standard output what it stores and what has changed.
#pragma once

#include "health/HealthEngine.h"
#include "start/ErrorExit.h"

#include <QHash>
#include <QTextStream>

#include <optional>

namespace velmora {

class HeadlessCapture : public QObject
{
    Q_OBJECT

public:
    /// passes: stop after this many; none for never.
    HeadlessCapture(CaptureEngine &engine, MailSender &sender, std::optional<int> passes);

    /// Starts the first pass, after which the timer takes over. False, with a message on standard
    /// error, when the storage folder is missing.
    [[nodiscard]] bool start();

    /// Runs the last pass and ends the program; a second call gives the pass up.
    void end();

    [[nodiscard]] const HealthBook &health() { return health_.book(); }

private:
    void connectReports();
    void reportStandstills();
    void say(const QString &text);
    void print(const QString &text);
    void flush();
    void reportFailure(CameraAddress camera, const QString &reason);
    void reportPass();
    [[nodiscard]] SettingsSnapshot settings() const;
    [[nodiscard]] QString title(CameraAddress camera) const;
    [[nodiscard]] QString identity(CameraAddress camera) const;
    QCoro::Task<> finish();
    QCoro::Task<> leave();
    void leaveAfterError(const QString &text);

    CaptureEngine &engine_;
    HealthEngine health_;
    QString standstill_; // last reported
    std::optional<int> passesLeft_;
    QTextStream out_;
    QHash<QString, QString> failures_; // of cameras whose last fetch failed: the kind, by identity
    int pass_ = 0;
    int good_ = 0;   // cameras that answered with a picture in this pass, new or not
    int stored_ = 0; // those of them whose picture was new
    int failed_ = 0;
    bool hasNews_ = true; // the first pass is always reported
    bool ending_ = false;
    ErrorExit errorExit_;
    TaskScope shutdown_;
};

} // namespace velmora
