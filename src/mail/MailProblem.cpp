#include "mail/MailProblem.h"

#include <QCoreApplication>

namespace velmora {
namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("AlarmMail", text);
}

// What is wrong with the settings, before any server is asked.
QString settingsText(MailFailure kind)
{
    switch (kind) {
    case MailFailure::NoServer:
        return tr("No mail server is set: write Server=… into the section [Mail] of Velmora.ini.");
    case MailFailure::BadServer:
        return tr("Server= in the section [Mail] of Velmora.ini names no mail server; write a "
                  "host, host:port, smtp://host or smtps://host, without user and password.");
    case MailFailure::NoRecipient:
        return tr("No recipient is set: write To=… into the section [Mail] of Velmora.ini.");
    case MailFailure::BadAddress:
        return tr("%1 in the section [Mail] of Velmora.ini is not a mail address.");
    default:
        return tr("User= or Password= in the section [Mail] of Velmora.ini cannot be used: the "
                  "user is missing, or one of them holds control characters.");
    }
}

QString connectionText(MailFailure kind)
{
    switch (kind) {
    case MailFailure::NameNotFound:
        return tr("The mail server %2 is not known by that name.");
    case MailFailure::Unreachable:
        return tr("The mail server %2 cannot be reached: the connection was refused.");
    case MailFailure::NotEncrypted:
        return tr("The mail server %2 offers no encryption, and user and password are not sent "
                  "without it. Use a server that offers STARTTLS, its smtps:// address, or one "
                  "that asks for no password.");
    case MailFailure::Tls:
        return tr("No encrypted connection to the mail server %2: %1.");
    case MailFailure::TimedOut:
        return tr("The mail server %2 did not answer in time.");
    case MailFailure::Cut:
        return tr("The mail server %2 ended the connection before it had taken the mail.");
    default:
        return tr("The answers of %2 are not those of a mail server.");
    }
}

QString refusalText(MailFailure kind)
{
    switch (kind) {
    case MailFailure::LoginRefused:
        return tr("The mail server %2 refuses user and password.");
    case MailFailure::ServerRefused:
        return tr("The mail server %2 refuses to serve: %1");
    case MailFailure::SenderRefused:
        return tr("The mail server %2 refuses the sender: %1");
    case MailFailure::RecipientRefused:
        return tr("The mail server %2 refuses a recipient: %1");
    case MailFailure::TextRefused:
        return tr("The mail server %2 refuses the mail: %1");
    case MailFailure::Stopped:
        return tr("The mail was given up.");
    default:
        return tr("The mail server %2: %1");
    }
}

QString textOf(MailFailure kind)
{
    if (kind <= MailFailure::BadLogin) {
        return settingsText(kind);
    }
    const bool refused = kind >= MailFailure::LoginRefused && kind <= MailFailure::TextRefused;
    const bool other = kind == MailFailure::Other || kind == MailFailure::Stopped;
    return refused || other ? refusalText(kind) : connectionText(kind);
}

} // namespace

QString mailProblemText(const MailProblem &problem)
{
    return tr("The mail was not sent. ") + textOf(problem.kind)
                                               .replace(QStringLiteral("%2"), problem.server)
                                               .replace(QStringLiteral("%1"), problem.detail);
}

bool isOfSettings(MailFailure failure)
{
    return failure <= MailFailure::BadLogin;
}

} // namespace velmora
