// A mail server on 127.0.0.1 in the test's own process: it answers each command as the test has
// set, and keeps commands and mails in order of arrival.
#pragma once

#include "support/Printers.h"

#include <QByteArrayList>
#include <QHash>
#include <QSet>
#include <QTcpServer>

namespace velmora::test {

enum class MailTls { None, Offered, FromTheStart };

/// Steps are named after their command; CONNECT is the greeting and TEXT the end of a mail's text.
struct MailScript
{
    MailTls tls = MailTls::None;
    QByteArrayList extensions; ///< listed in answer to EHLO
    QByteArray user;           ///< who may log in, by PLAIN or LOGIN
    QByteArray password;
    QHash<QByteArray, QByteArray> replies; ///< instead of the usual ones, without the last CR LF
    QSet<QByteArray> silent;               ///< steps that get no answer
    QSet<QByteArray> cut;                  ///< steps at which the connection is closed
    QSet<QByteArray> endless;              ///< steps whose answer has endless lines
};

struct ReceivedMail
{
    QByteArray from; ///< what follows "MAIL FROM:"
    QByteArrayList recipients;
    QByteArray text; ///< as sent, without the dot stuffing and the final dot
    bool encrypted = false;
    bool loggedIn = false;
};

class LoopbackMail : public QTcpServer
{
public:
    explicit LoopbackMail(MailScript script = {});

    /// "127.0.0.1:port".
    [[nodiscard]] QByteArray host() const;

    [[nodiscard]] const QByteArrayList &commands() const { return commands_; }

    [[nodiscard]] const QList<ReceivedMail> &mails() const { return mails_; }

    [[nodiscard]] int connections() const { return connections_; }

    MailScript script;

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    class Session;

    QByteArrayList commands_;
    QList<ReceivedMail> mails_;
    int connections_ = 0;
};

} // namespace velmora::test
