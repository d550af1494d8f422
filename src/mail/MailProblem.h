// Why a mail was not sent, for the program and for the user.
#pragma once

#include <QString>

namespace velmora {

/// Those of the settings stand first.
enum class MailFailure {
    NoServer,         // the settings name none
    BadServer,        // the text is not the address of a mail server
    NoRecipient,      // the settings name none
    BadAddress,       // detail: the text that is not a mail address
    BadLogin,         // user or password cannot be sent, or the user is missing
    NameNotFound,     // the server's name
    Unreachable,      // nothing listens there
    NotEncrypted,     // a password is not sent in the clear
    Tls,              // no encryption could be agreed, or the certificate is not trusted
    LoginRefused,     // wrong user or password
    ServerRefused,    // the server serves no one now, or not us; detail: its words
    SenderRefused,    // detail: the server's words
    RecipientRefused, // detail: the server's words
    TextRefused,      // detail: the server's words
    TimedOut,
    Cut,      // the connection was cut
    Nonsense, // the answers are not those of a mail server
    Other,    // detail: what libcurl says
    Stopped   // the program is ending
};

struct MailProblem
{
    MailFailure kind = MailFailure::Other;
    QString detail = {};
    QString server = {}; // host and port, for messages

    bool operator==(const MailProblem &) const = default;
};

/// A sentence for a warning. Holds no password, provided that the details hold none.
[[nodiscard]] QString mailProblemText(const MailProblem &problem);

/// True when the settings are at fault, so that another try would change nothing.
[[nodiscard]] constexpr bool isOfSettings(MailFailure failure)
{
    return failure <= MailFailure::BadLogin;
}

} // namespace velmora
