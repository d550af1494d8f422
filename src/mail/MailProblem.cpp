#include "mail/MailProblem.h"

#include <QCoreApplication>

#include <array>

namespace velmora {
namespace {

class AlarmMailTexts
{
    Q_DECLARE_TR_FUNCTIONS(AlarmMail)

public:
    // In the order of MailFailure. %1 is the detail, %2 the server.
    static constexpr std::array kAll{
        QT_TR_NOOP("No mail server is set: write Server=… into the section [Mail] of Velmora.ini."),
        QT_TR_NOOP("Server= in the section [Mail] of Velmora.ini names no mail server; write a "
                   "host, host:port, smtp://host or smtps://host, without user and password."),
        QT_TR_NOOP("No recipient is set: write To=… into the section [Mail] of Velmora.ini."),
        QT_TR_NOOP("%1 in the section [Mail] of Velmora.ini is not a mail address."),
        QT_TR_NOOP("User= or Password= in the section [Mail] of Velmora.ini cannot be used: the "
                   "user is missing, or one of them holds control characters."),
        QT_TR_NOOP("The mail server %2 is not known by that name."),
        QT_TR_NOOP("The mail server %2 cannot be reached: the connection was refused."),
        QT_TR_NOOP("The mail server %2 offers no encryption, and user and password are not sent "
                   "without it. Use a server that offers STARTTLS, its smtps:// address, or one "
                   "that asks for no password."),
        QT_TR_NOOP("No encrypted connection to the mail server %2: %1."),
        QT_TR_NOOP("The mail server %2 refuses user and password."),
        QT_TR_NOOP("The mail server %2 refuses to serve: %1"),
        QT_TR_NOOP("The mail server %2 refuses the sender: %1"),
        QT_TR_NOOP("The mail server %2 refuses a recipient: %1"),
        QT_TR_NOOP("The mail server %2 refuses the mail: %1"),
        QT_TR_NOOP("The mail server %2 did not answer in time."),
        QT_TR_NOOP("The mail server %2 ended the connection before it had taken the mail."),
        QT_TR_NOOP("The answers of %2 are not those of a mail server."),
        QT_TR_NOOP("The mail server %2: %1"),
        QT_TR_NOOP("The mail was given up."),
    };
    static_assert(kAll.size() == static_cast<std::size_t>(MailFailure::Stopped) + 1);
};

} // namespace

QString mailProblemText(const MailProblem &problem)
{
    const char *const reason = AlarmMailTexts::kAll.at(static_cast<std::size_t>(problem.kind));
    return AlarmMailTexts::tr("The mail was not sent. ") +
           AlarmMailTexts::tr(reason)
               .replace(QLatin1String("%2"), problem.server)
               .replace(QLatin1String("%1"), problem.detail);
}

} // namespace velmora
