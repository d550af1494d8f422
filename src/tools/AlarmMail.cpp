#include "tools/AlarmMail.h"

#include "tools/MailText.h"

#include <QUuid>

namespace velmora {

AlarmMail::AlarmMail(const SettingsFile &settings, MailSender &sender, const Clock &clock,
                     TaskScope &scope)
    : settings_(settings)
    , sender_(sender)
    , clock_(clock)
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
    const auto account = mailAccount(settings_.snapshot());
    std::optional<MailProblem> problem;
    if (const auto *const checked = std::get_if<MailAccount>(&account)) {
        problem = co_await sender_.send(*checked, letter(*checked, text), scope_.stopToken());
    } else {
        problem = std::get<MailProblem>(account);
    }
    sending_ = false;
    if (!problem) {
        Q_EMIT sent();
    } else if (problem->kind != MailFailure::Stopped) {
        Q_EMIT failed(mailProblemText(*problem));
    }
}

QByteArray AlarmMail::letter(const MailAccount &account, const QString &text) const
{
    return mailText({account.from, account.to, QStringLiteral("Alarm"), text, clock_.localNow(),
                     clock_.utcOffset(), QUuid::createUuid().toByteArray(QUuid::Id128)});
}

} // namespace velmora
