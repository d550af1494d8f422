#include "mail/MailAccount.h"

#include "base/OneLine.h"
#include "settings/Keys.h"

#include <QUrl>

#include <arpa/inet.h>

namespace velmora {
namespace {

constexpr quint32 kLoopbackNet = 127;
constexpr int kNetShift = 24;

// Only a literal address, or the one name that never leaves the machine, is trusted to be this one.
bool isThisMachine(const QString &host)
{
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    const QByteArray text = host.toLatin1();
    in_addr four = {};
    in6_addr six = {};
    if (::inet_pton(AF_INET, text.constData(), &four) == 1) {
        return ntohl(four.s_addr) >> kNetShift == kLoopbackNet;
    }
    return ::inet_pton(AF_INET6, text.constData(), &six) == 1 && IN6_IS_ADDR_LOOPBACK(&six) != 0;
}

QUrl serverUrl(const QString &server)
{
    const bool plain = !server.contains(QLatin1String("://"));
    return QUrl(plain ? QStringLiteral("smtp://") + server : server, QUrl::StrictMode);
}

bool isServer(const QUrl &url)
{
    const bool known =
        url.scheme() == QLatin1String("smtp") || url.scheme() == QLatin1String("smtps");
    const bool bare = url.userInfo().isEmpty() && !url.hasQuery() && !url.hasFragment() &&
                      (url.path().isEmpty() || url.path() == QLatin1String("/"));
    return url.isValid() && known && bare && !url.host().isEmpty() && url.port() != 0 &&
           !url.authority().contains(u'@');
}

using Problem = std::optional<MailProblem>;

Problem problem(MailFailure kind, const QString &detail = {})
{
    return MailProblem{kind, detail, {}};
}

Problem badAddress(const char *key, const QString &text)
{
    return problem(MailFailure::BadAddress, QLatin1String(key) + onOneLine(text));
}

Problem readServer(const SettingsSnapshot &settings, MailAccount &account)
{
    const QString server = keys::kMailServer.read(settings).trimmed();
    if (server.isEmpty()) {
        return problem(MailFailure::NoServer);
    }
    const QUrl url = serverUrl(server);
    if (holdsControls(server) || !isServer(url)) {
        return problem(MailFailure::BadServer);
    }
    const QUrl bare = url.adjusted(QUrl::RemovePath);
    account.url = bare.toEncoded();
    account.serverText = bare.authority();
    if (url.scheme() == QLatin1String("smtps")) {
        account.encryption = MailEncryption::FromTheStart;
    }
    return std::nullopt;
}

Problem readRecipients(const SettingsSnapshot &settings, MailAccount &account)
{
    for (const QString &text : addressTexts(keys::kMailTo.read(settings))) {
        const auto address = mailAddress(text);
        if (!address) {
            return badAddress("To=", text);
        }
        account.to.append(*address);
    }
    return account.to.isEmpty() ? problem(MailFailure::NoRecipient) : std::nullopt;
}

Problem readSender(const SettingsSnapshot &settings, MailAccount &account)
{
    const QString text = keys::kMailFrom.read(settings).trimmed();
    const auto address = text.isEmpty() ? account.to.first() : mailAddress(text);
    if (!address) {
        return badAddress("From=", text);
    }
    account.from = *address;
    return std::nullopt;
}

Problem readLogin(const SettingsSnapshot &settings, MailAccount &account)
{
    const QString user = keys::kMailUser.read(settings);
    const QString password = keys::kMailPassword.read(settings);
    if (holdsControls(user) || holdsControls(password) || (user.isEmpty() && !password.isEmpty())) {
        return problem(MailFailure::BadLogin);
    }
    account.user = user.toUtf8();
    account.password = password.toUtf8();
    if (!user.isEmpty() && account.encryption == MailEncryption::WhenOffered &&
        !isThisMachine(QUrl(QString::fromLatin1(account.url)).host())) {
        account.encryption = MailEncryption::Required;
    }
    return std::nullopt;
}

} // namespace

std::variant<MailAccount, MailProblem> mailAccount(const SettingsSnapshot &settings)
{
    MailAccount account;
    for (const auto step : {&readServer, &readRecipients, &readSender, &readLogin}) {
        if (const Problem found = step(settings, account)) {
            return *found;
        }
    }
    return account;
}

} // namespace velmora
