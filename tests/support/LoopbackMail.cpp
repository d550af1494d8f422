#include "support/LoopbackMail.h"

#include "support/LoopbackTls.h"

#include <QHostAddress>
#include <QSslSocket>

#include <stdexcept>

namespace velmora::test {
namespace {

const QHash<QByteArray, QByteArray> kUsualReplies{
    {"CONNECT", "220 loopback ESMTP"},
    {"STARTTLS", "220 go ahead"},
    {"MAIL", "250 sender ok"},
    {"RCPT", "250 recipient ok"},
    {"DATA", "354 go ahead"},
    {"TEXT", "250 taken"},
    {"QUIT", "221 bye"},
};

const QByteArray kManyLines = QByteArray("250-more\r\n").repeated(500);

QByteArray afterColon(const QByteArray &line)
{
    return line.mid(line.indexOf(':') + 1);
}

} // namespace

/// One client. Lives as long as its socket.
class LoopbackMail::Session : public QObject
{
public:
    Session(QSslSocket *socket, LoopbackMail &server)
        : QObject(socket)
        , socket_(*socket)
        , server_(server)
    {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QSslSocket::readyRead, this, &Session::read);
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QSslSocket::bytesWritten, this, &Session::repeat);
        connect(socket, &QSslSocket::encryptedBytesWritten, this, &Session::repeat);
        if (script().tls == MailTls::FromTheStart) {
            connect(socket, &QSslSocket::encrypted, this, [this] { step("CONNECT"); });
            socket->startServerEncryption();
        } else {
            step("CONNECT");
        }
    }

    Q_DISABLE_COPY_MOVE(Session)

    ~Session() override = default;

private:
    enum class Expects { Command, Text, User, Password, Plain };

    [[nodiscard]] const MailScript &script() const { return server_.script; }

    void read()
    {
        while (socket_.canReadLine()) {
            QByteArray line = socket_.readLine();
            if (expects_ == Expects::Text) {
                readText(line);
            } else {
                readLine(line.trimmed());
            }
        }
    }

    void readText(const QByteArray &line)
    {
        if (line == ".\r\n") {
            expects_ = Expects::Command;
            if (step("TEXT")) {
                server_.mails_.append(mail_);
            }
        } else {
            mail_.text += line.startsWith('.') ? line.mid(1) : line;
        }
    }

    void readLine(const QByteArray &line)
    {
        server_.commands_.append(line);
        switch (expects_) {
        case Expects::User:
            user_ = QByteArray::fromBase64(line);
            ask(Expects::Password, "334 UGFzc3dvcmQ6");
            break;
        case Expects::Password:
            logIn(user_, QByteArray::fromBase64(line));
            break;
        case Expects::Plain:
            logInPlain(line);
            break;
        default:
            obey(line);
        }
    }

    void obey(const QByteArray &line)
    {
        const QByteArray verb = line.split(' ').first().toUpper();
        if (verb == "EHLO") {
            stepWith(verb, greetingLines());
        } else if (verb == "AUTH") {
            authenticate(line);
        } else if (verb == "STARTTLS") {
            encrypt();
        } else {
            note(verb, line);
        }
    }

    // Records the parts of a mail.
    void note(const QByteArray &verb, const QByteArray &line)
    {
        if (verb == "MAIL") {
            mail_.from = afterColon(line);
            mail_.encrypted = socket_.isEncrypted();
        } else if (verb == "RCPT") {
            mail_.recipients.append(afterColon(line));
        }
        if (step(verb) && verb == "DATA") {
            expects_ = Expects::Text;
        } else if (verb == "QUIT" && !script().silent.contains("QUIT")) {
            socket_.disconnectFromHost();
        }
    }

    [[nodiscard]] QByteArray greetingLines() const
    {
        QByteArrayList lines{"loopback"};
        lines += script().extensions;
        if (script().tls == MailTls::Offered && !socket_.isEncrypted()) {
            lines.append("STARTTLS");
        }
        for (QByteArray &line : lines) {
            line.prepend("250-");
        }
        lines.last()[3] = ' ';
        return lines.join("\r\n");
    }

    void encrypt()
    {
        if (step("STARTTLS")) {
            socket_.flush();
            socket_.startServerEncryption();
        }
    }

    void authenticate(const QByteArray &line)
    {
        if (script().silent.contains("AUTH") || script().cut.contains("AUTH")) {
            step("AUTH");
        } else if (line.startsWith("AUTH PLAIN ")) {
            logInPlain(line.mid(11));
        } else if (line == "AUTH PLAIN") {
            ask(Expects::Plain, "334 ");
        } else {
            ask(Expects::User, "334 VXNlcm5hbWU6");
        }
    }

    void ask(Expects next, const QByteArray &question)
    {
        expects_ = next;
        socket_.write(question + "\r\n");
    }

    void logInPlain(const QByteArray &encoded)
    {
        const QByteArrayList parts = QByteArray::fromBase64(encoded).split('\0');
        logIn(parts.value(1), parts.value(2));
    }

    void logIn(const QByteArray &user, const QByteArray &password)
    {
        expects_ = Expects::Command;
        mail_.loggedIn = user == script().user && password == script().password;
        stepWith("AUTH", mail_.loggedIn ? "235 welcome" : "535 5.7.8 wrong password " + password);
    }

    bool step(const QByteArray &name)
    {
        return stepWith(name, kUsualReplies.value(name, "500 what?"));
    }

    // True when the step succeeds: the reply is sent and is positive.
    bool stepWith(const QByteArray &name, const QByteArray &usual)
    {
        if (script().silent.contains(name)) {
            return false;
        }
        if (script().cut.contains(name)) {
            socket_.abort();
            return false;
        }
        endless_ = script().endless.contains(name);
        const QByteArray reply = script().replies.value(name, usual);
        socket_.write(endless_ ? kManyLines : reply + "\r\n");
        return !endless_ && (reply.startsWith('2') || reply.startsWith('3'));
    }

    void repeat()
    {
        if (endless_ && socket_.bytesToWrite() == 0) {
            socket_.write(kManyLines);
        }
    }

    QSslSocket &socket_;
    LoopbackMail &server_;
    Expects expects_ = Expects::Command;
    QByteArray user_;
    ReceivedMail mail_;
    bool endless_ = false;
};

LoopbackMail::LoopbackMail(MailScript told)
    : script(std::move(told))
{
    if (!listen(QHostAddress::LocalHost)) {
        throw std::runtime_error("the loopback mail server cannot listen");
    }
}

QByteArray LoopbackMail::host() const
{
    return "127.0.0.1:" + QByteArray::number(serverPort());
}

void LoopbackMail::incomingConnection(qintptr descriptor)
{
    ++connections_;
    auto *const socket = new QSslSocket(this);
    socket->setSslConfiguration(selfSignedConfiguration());
    socket->setSocketDescriptor(descriptor);
    new Session(socket, *this); // the socket owns it
}

} // namespace velmora::test
