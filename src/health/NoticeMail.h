// Mails the notices, gathered: at most one mail in ten minutes.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "health/HealthOptions.h"
#include "mail/Mailer.h"

#include <QObject>
#include <QStringList>

namespace velmora {

/// Works in the scope, which is joined before the object is destroyed.
class NoticeMail : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object.
    NoticeMail(const SettingsFile &settings, MailSender &sender, Clock &clock, TaskScope &scope);

    /// Puts a line into the next mail, if mails are wanted.
    void add(const QString &text);

Q_SIGNALS:
    /// text: why a mail was not sent, for the user. Its lines go into the next one.
    void failed(const QString &text);

private:
    QCoro::Task<> run();
    QCoro::Task<> post();

    Mailer mailer_;
    HealthOptions options_;
    Clock &clock_;
    TaskScope &scope_;
    QStringList waiting_;
    qsizetype inMail_ = 0; // how many of them, from the first on, are being sent
    std::optional<std::chrono::milliseconds> last_; // when the last one was sent
    bool running_ = false;
};

} // namespace velmora
