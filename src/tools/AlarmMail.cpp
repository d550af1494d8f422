#include "tools/AlarmMail.h"

#include <QScopeGuard>

namespace velmora {

AlarmMail::AlarmMail(const SettingsFile &settings, MailSender &sender, const Clock &clock,
                     TaskScope &scope)
    : mailer_(settings, sender, clock)
    , scope_(scope)
{
}

void AlarmMail::send(const QString &text)
{
    if (sending_ || scope_.stopToken().stop_requested()) {
        return;
    }
    sending_ = true;
    Q_EMIT began();
    scope_.launch(post(text));
}

QCoro::Task<> AlarmMail::post(QString text)
{
    std::optional<MailProblem> problem;
    {
        const auto done = qScopeGuard([this] { end(); });
        problem = co_await mailer_.send(QStringLiteral("Alarm"), text, scope_.stopToken());
    }
    if (!problem) {
        Q_EMIT sent();
    } else if (problem->kind != MailFailure::Stopped) {
        Q_EMIT failed(mailProblemText(*problem));
    }
}

void AlarmMail::end()
{
    sending_ = false;
    Q_EMIT ended();
}

} // namespace velmora
