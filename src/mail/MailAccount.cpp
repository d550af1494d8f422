#include "mail/MailAccount.h"

#include "base/OneLine.h"
#include "settings/Keys.h"

#include <QRegularExpression>
#include <QUrl>

namespace velmora {
namespace {

using Problem = std::optional<MailProblem>;

// A dot-atom of 64 letters at most, and a host name of labels of 63, together at most 255: as they
// are, or else with the host in its ASCII form.
std::optional<QByteArray> checkedAddress(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral(
        R"(\A(?=[^@]{1,64}@.{1,255}\z)(?<atom>[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]+)(\.(?&atom))*)"
        R"(@(?<label>(?!-)[A-Za-z0-9-]{1,63}(?<!-))(\.(?&label))*\z)"));
    const qsizetype host = text.lastIndexOf(u'@') + 1;
    const QByteArray asciiHost = QUrl::toAce(text.sliced(host));
    for (const auto &form : {text, text.first(host) + QLatin1String(asciiHost)}) {
        if (plain.match(form).hasMatch()) {
            return form.toLatin1();
        }
    }
    return std::nullopt;
}

// Only a literal address, or the one name that never leaves the machine, is trusted to be this one.
bool isThisMachine(const QString &host)
{
    static const QRegularExpression names(QStringLiteral(
        R"(\A(?:localhost|::1|127(?:\.(?:25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])){3})\z)"));
    return names.match(host).hasMatch();
}

// Without a host unless the text is a host, with its port or scheme at most.
QUrl serverUrl(const QString &server)
{
    static const QRegularExpression form(
        QStringLiteral(R"(\A(smtps?://[^/?#@\p{Cc}\p{Zl}\p{Zp}]+)/?\z)"),
        QRegularExpression::CaseInsensitiveOption);
    const bool plain = !server.contains(QLatin1String("://"));
    const auto match = form.match(plain ? QStringLiteral("smtp://") + server : server);
    return QUrl(match.captured(1), QUrl::StrictMode);
}

Problem readServer(const SettingsSnapshot &settings, MailAccount &account)
{
    const QString server = keys::kMailServer.read(settings).trimmed();
    if (server.isEmpty()) {
        return MailProblem{MailFailure::NoServer};
    }
    const QUrl url = serverUrl(server);
    if (url.host().isEmpty() || url.port() == 0) {
        return MailProblem{MailFailure::BadServer};
    }
    account.url = url.toEncoded();
    account.serverText = url.authority();
    if (url.scheme() == QLatin1String("smtps")) {
        account.encryption = MailEncryption::FromTheStart;
    } else if (!isThisMachine(url.host()) && !keys::kMailUser.read(settings).isEmpty()) {
        account.encryption = MailEncryption::Required;
    }
    return std::nullopt;
}

Problem readAddress(const char *key, const QString &text, MailAddress &address)
{
    const auto read = mailAddress(text);
    if (!read) {
        return MailProblem{MailFailure::BadAddress, QLatin1String(key) + onOneLine(text)};
    }
    address = *read;
    return std::nullopt;
}

Problem readAddresses(const SettingsSnapshot &settings, MailAccount &account)
{
    for (const QString &text : addressTexts(keys::kMailTo.read(settings))) {
        if (const Problem bad = readAddress("To=", text, account.to.emplaceBack())) {
            return bad;
        }
    }
    if (account.to.isEmpty()) {
        return MailProblem{MailFailure::NoRecipient};
    }
    account.from = account.to.first();
    const QString sender = keys::kMailFrom.read(settings).trimmed();
    return sender.isEmpty() ? std::nullopt : readAddress("From=", sender, account.from);
}

Problem readLogin(const SettingsSnapshot &settings, MailAccount &account)
{
    const QString user = keys::kMailUser.read(settings);
    const QString password = keys::kMailPassword.read(settings);
    account.user = user.toUtf8();
    account.password = password.toUtf8();
    const bool isBad = holdsControls(user + password) || (user.isEmpty() && !password.isEmpty());
    return isBad ? Problem(MailProblem{MailFailure::BadLogin}) : std::nullopt;
}

} // namespace

std::optional<MailAddress> mailAddress(QStringView text)
{
    static const QRegularExpression named(
        QStringLiteral(R"re(\A(?:"(?<quoted>.*)"|(?<plain>.*?))\s*<\s*(?<address>[^<]*?)\s*>\z)re"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression escape(QStringLiteral(R"(\\(.))"));
    const QString trimmed = text.trimmed().toString();
    const QRegularExpressionMatch match = named.match(trimmed);
    const auto address = checkedAddress(match.hasMatch() ? match.captured(u"address") : trimmed);
    if (!address || holdsControls(text)) {
        return std::nullopt;
    }
    const QString unquoted = match.captured(u"quoted").replace(escape, QStringLiteral("\\1"));
    return MailAddress{unquoted + match.captured(u"plain"), *address};
}

QStringList addressTexts(QStringView list)
{
    static const QRegularExpression part(QStringLiteral(R"((?:[^,;"]|"(?:[^"\\]|\\.)*"?)+)"));
    QStringList texts;
    for (const QRegularExpressionMatch &match : part.globalMatch(list.toString())) {
        texts.append(match.captured().trimmed());
    }
    texts.removeAll(QString());
    return texts;
}

std::variant<MailAccount, MailProblem> mailAccount(const SettingsSnapshot &settings)
{
    MailAccount account;
    for (const auto step : {&readServer, &readAddresses, &readLogin}) {
        if (const Problem found = step(settings, account)) {
            return *found;
        }
    }
    return account;
}

} // namespace velmora
