// Why a mail was not sent, for the program and for people.
#pragma once

#include <QString>

namespace velmora {

enum class MailFailure {
    NoServer,         // the settings name none
    BadServer,        // what they name is no address of a mail server
    NoRecipient,      // the settings name none
    BadAddress,       // detail: the text that is no address of mail
    BadLogin,         // user or password cannot be sent, or the user is missing
    NameNotFound,     // of the server
    Unreachable,      // nobody listens there
    NotEncrypted,     // a password is not sent in the clear
    Tls,              // no encryption could be agreed, or the certificate is not trusted
    LoginRefused,     // wrong user or password
    ServerRefused,    // the server serves nobody now, or not us; detail: its words
    SenderRefused,    // detail: the server's words
    RecipientRefused, // detail: the server's words
    TextRefused,      // detail: the server's words
    TimedOut,
    Cut,      // the connection ended in the middle
    Nonsense, // the answers are not those of a mail server
    Other,    // detail: what libcurl says
    Stopped   // the program ends
};

struct MailProblem
{
    MailFailure kind = MailFailure::Other;
    QString detail;
    QString server; // host and port, for messages

    bool operator==(const MailProblem &) const = default;
};

/// A sentence for a warning. No password is in it as long as none is in the details.
[[nodiscard]] QString mailProblemText(const MailProblem &problem);

} // namespace velmora
