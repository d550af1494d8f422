#include "mail/MailProblem.h"

#include <QCoreApplication>

#include <array>

namespace velmora {
namespace {

// In the order of MailFailure. %1 is the detail, %2 the server.
constexpr std::array kTexts{
    QT_TRANSLATE_NOOP(
        "AlarmMail",
        "No mail server is set: write Server=… into the section [Mail] of Velmora.ini."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "Server= in the section [Mail] of Velmora.ini names no mail server; write a "
                      "host, host:port, smtp://host or smtps://host, without user and password."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "No recipient is set: write To=… into the section [Mail] of Velmora.ini."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "%1 in the section [Mail] of Velmora.ini is not a mail address."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "User= or Password= in the section [Mail] of Velmora.ini cannot be used: the "
                      "user is missing, or one of them holds control characters."),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 is not known by that name."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "The mail server %2 cannot be reached: the connection was refused."),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 offers no encryption, and user and password "
                                   "are not sent without it. Use a server that offers STARTTLS, "
                                   "its smtps:// address, or one that asks for no password."),
    QT_TRANSLATE_NOOP("AlarmMail", "No encrypted connection to the mail server %2: %1."),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 refuses user and password."),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 refuses to serve: %1"),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 refuses the sender: %1"),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 refuses a recipient: %1"),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 refuses the mail: %1"),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2 did not answer in time."),
    QT_TRANSLATE_NOOP("AlarmMail",
                      "The mail server %2 ended the connection before it had taken the mail."),
    QT_TRANSLATE_NOOP("AlarmMail", "The answers of %2 are not those of a mail server."),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail server %2: %1"),
    QT_TRANSLATE_NOOP("AlarmMail", "The mail was given up."),
};
static_assert(kTexts.size() == static_cast<std::size_t>(MailFailure::Stopped) + 1);

QString tr(const char *text)
{
    return QCoreApplication::translate("AlarmMail", text);
}

} // namespace

QString mailProblemText(const MailProblem &problem)
{
    return tr("The mail was not sent. ") + tr(kTexts.at(static_cast<std::size_t>(problem.kind)))
                                               .replace(QStringLiteral("%2"), problem.server)
                                               .replace(QStringLiteral("%1"), problem.detail);
}

bool isOfSettings(MailFailure failure)
{
    return failure <= MailFailure::BadLogin;
}

} // namespace velmora
