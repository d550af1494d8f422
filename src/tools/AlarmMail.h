// Sends the alarm's mail to the recipient in the settings.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "mail/Mailer.h"

#include <QObject>

namespace velmora {

/// One mail at a time. Nothing is logged and nothing is retried. Works in the scope, which must be
/// joined before the object is destroyed.
class AlarmMail : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object.
    AlarmMail(const SettingsFile &settings, MailSender &sender, const Clock &clock,
              TaskScope &scope);

    /// Sends a text under the subject "Alarm" with the current settings; does nothing while a mail
    /// is being sent.
    void send(const QString &text);

Q_SIGNALS:
    void began();

    /// The mail is no longer on its way, even if sending broke down; before sent() or failed().
    void ended();

    /// The server has accepted the mail.
    void sent();

    /// text: why it was not sent, for the user.
    void failed(const QString &text);

private:
    QCoro::Task<> post(QString text);
    void end();

    Mailer mailer_;
    TaskScope &scope_;
    bool sending_ = false;
};

} // namespace velmora
