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

MailProblem problem(MailFailure kind, const QString &detail = {})
{
    return {kind, detail, {}};
}

class AccountReader
{
public:
    explicit AccountReader(const SettingsSnapshot &settings)
        : settings_(settings)
    {
    }

    // The first problem found, if any.
    std::optional<MailProblem> read()
    {
        for (const auto step : {&AccountReader::readServer, &AccountReader::readRecipients,
                                &AccountReader::readSender, &AccountReader::readLogin}) {
            if (auto found = (this->*step)()) {
                return found;
            }
        }
        return std::nullopt;
    }

    MailAccount account;

private:
    std::optional<MailProblem> readServer()
    {
        const QString server = keys::kMailServer.read(settings_).trimmed();
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
        host_ = url.host();
        if (url.scheme() == QLatin1String("smtps")) {
            account.encryption = MailEncryption::FromTheStart;
        }
        return std::nullopt;
    }

    std::optional<MailProblem> readRecipients()
    {
        for (const QString &text : addressTexts(keys::kMailTo.read(settings_))) {
            const auto address = mailAddress(text);
            if (!address) {
                return problem(MailFailure::BadAddress, QStringLiteral("To=") + onOneLine(text));
            }
            account.to.append(*address);
        }
        return account.to.isEmpty() ? std::optional(problem(MailFailure::NoRecipient))
                                    : std::nullopt;
    }

    std::optional<MailProblem> readSender()
    {
        const QString text = keys::kMailFrom.read(settings_).trimmed();
        const auto address = text.isEmpty() ? account.to.first() : mailAddress(text);
        if (!address) {
            return problem(MailFailure::BadAddress, QStringLiteral("From=") + onOneLine(text));
        }
        account.from = *address;
        return std::nullopt;
    }

    std::optional<MailProblem> readLogin()
    {
        const QString user = keys::kMailUser.read(settings_);
        const QString password = keys::kMailPassword.read(settings_);
        if (holdsControls(user) || holdsControls(password) ||
            (user.isEmpty() && !password.isEmpty())) {
            return problem(MailFailure::BadLogin);
        }
        account.user = user.toUtf8();
        account.password = password.toUtf8();
        if (!user.isEmpty() && account.encryption == MailEncryption::WhenOffered &&
            !isThisMachine(host_)) {
            account.encryption = MailEncryption::Required;
        }
        return std::nullopt;
    }

    const SettingsSnapshot &settings_;
    QString host_;
};

} // namespace

std::variant<MailAccount, MailProblem> mailAccount(const SettingsSnapshot &settings)
{
    AccountReader reader(settings);
    if (const std::optional<MailProblem> found = reader.read()) {
        return *found;
    }
    return std::move(reader.account);
}

} // namespace velmora
