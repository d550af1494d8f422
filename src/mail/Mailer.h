// Sends plain mails through the account in the settings.
#pragma once

#include "base/Clock.h"
#include "mail/SmtpClient.h"
#include "settings/SettingsFile.h"

namespace velmora {

class Mailer
{
public:
    /// Everything passed in outlives the object.
    Mailer(const SettingsFile &settings, MailSender &sender, const Clock &clock);

    /// Sends a text with the settings of this moment. Nothing when the server has accepted it, else
    /// why it has not. Ends early when a stop is requested.
    QCoro::Task<std::optional<MailProblem>> send(QString subject, QString text,
                                                 std::stop_token stop);

private:
    const SettingsFile &settings_;
    MailSender &sender_;
    const Clock &clock_;
};

} // namespace velmora
