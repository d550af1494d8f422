#include "mail/Mailer.h"

#include "mail/MailText.h"

#include <QUuid>

#include <utility>

namespace velmora {

Mailer::Mailer(const SettingsFile &settings, MailSender &sender, const Clock &clock)
    : settings_(settings)
    , sender_(sender)
    , clock_(clock)
{
}

QCoro::Task<std::optional<MailProblem>> Mailer::send(QString subject, QString text,
                                                     std::stop_token stop)
{
    const auto account = mailAccount(settings_.snapshot());
    const auto *const checked = std::get_if<MailAccount>(&account);
    if (checked == nullptr) {
        co_return std::get<MailProblem>(account);
    }
    const MailLetter letter{checked->from,
                            checked->to,
                            std::move(subject),
                            std::move(text),
                            clock_.localNow(),
                            clock_.utcOffset(),
                            QUuid::createUuid().toByteArray(QUuid::Id128)};
    co_return co_await sender_.send(*checked, mailText(letter), std::move(stop));
}

} // namespace velmora
