#include "mail/MailAddress.h"

#include "base/OneLine.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kMaxLocalLetters = 64;
constexpr qsizetype kMaxHostLetters = 255;

bool isLocalPart(QStringView text)
{
    static const QRegularExpression dotAtom(QStringLiteral(
        R"(\A[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]+(\.[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]+)*\z)"));
    return text.size() <= kMaxLocalLetters && dotAtom.match(text.toString()).hasMatch();
}

bool isHostName(const QString &text)
{
    static const QRegularExpression labels(
        QStringLiteral(R"(\A(?!-)[A-Za-z0-9-]{1,63}(?<!-)(\.(?!-)[A-Za-z0-9-]{1,63}(?<!-))*\z)"));
    return text.size() <= kMaxHostLetters && labels.match(text).hasMatch();
}

// Empty when it is not a host name.
QByteArray hostInAscii(const QString &host)
{
    if (isHostName(host)) {
        return host.toLatin1();
    }
    const QByteArray ascii = QUrl::toAce(host);
    return isHostName(QString::fromLatin1(ascii)) ? ascii : QByteArray();
}

std::optional<QByteArray> checkedAddress(QStringView text)
{
    const qsizetype at = text.lastIndexOf(u'@');
    if (at < 0 || !isLocalPart(text.first(at))) {
        return std::nullopt;
    }
    const QByteArray host = hostInAscii(text.sliced(at + 1).toString());
    if (host.isEmpty()) {
        return std::nullopt;
    }
    return text.first(at).toLatin1() + '@' + host;
}

// Strips a quoted name of its quotes.
QString plainName(QStringView name)
{
    QString plain = name.trimmed().toString();
    if (plain.size() >= 2 && plain.startsWith(u'"') && plain.endsWith(u'"')) {
        static const QRegularExpression escape(QStringLiteral(R"(\\(.))"));
        plain = plain.sliced(1, plain.size() - 2).replace(escape, QStringLiteral("\\1"));
    }
    return plain;
}

} // namespace

std::optional<MailAddress> mailAddress(QStringView text)
{
    if (holdsControls(text)) {
        return std::nullopt;
    }
    const QStringView trimmed = text.trimmed();
    const qsizetype bracket = trimmed.lastIndexOf(u'<');
    const bool named = bracket >= 0 && trimmed.endsWith(u'>');
    const std::optional<QByteArray> address = checkedAddress(
        named ? trimmed.sliced(bracket + 1, trimmed.size() - bracket - 2).trimmed() : trimmed);
    if (!address) {
        return std::nullopt;
    }
    return MailAddress{named ? plainName(trimmed.first(bracket)) : QString(), *address};
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

} // namespace velmora
